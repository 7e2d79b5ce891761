#include "format/CodedTexts.h"

#include "FieldInfo.h"

#include <algorithm>

CodedTexts::CodedTexts(const FieldInfo* fieldInfo) : info(fieldInfo)
{
    for (const FieldInfo::SymbolicValue& symbolic : info->getSymbolicValues()) {
        add(symbolic.first);
    }
    if (info->hasDoNotUseValue()) {
        add(info->getDoNotUseValue());
    }
}

void CodedTexts::add(const FieldValue& value)
{
    entries.push_back({.bits = bitsOf(value)});
}

const std::string* CodedTexts::of(const Message& message, unsigned index, const FieldValue& value)
{
    const std::uint64_t bits = bitsOf(value);
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [&](const Entry& candidate) { return candidate.bits == bits; });
    if (entry == entries.end()) {
        return nullptr;
    }
    if (!entry->known) {
        entry->text = info->getInterpretedString(&message, index, false).toStdString();
        entry->known = true;
    }
    return &entry->text;
}
