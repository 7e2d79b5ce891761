#include "FormatInfo.h"

#include <utility>

FormatInfo::FormatInfo(QString formatName) : name(std::move(formatName)) {}

FormatInfo::~FormatInfo() = default;

void FormatInfo::addMessageInfo(const MessageInfo* info)
{
    messageInfos.append(info);
}

void FormatInfo::addSubMessageInfo(const MessageInfo* info)
{
    subMessageInfos.append(info);
}
