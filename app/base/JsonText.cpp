#include "base/JsonText.h"

#include <rapidjson/writer.h>

#include <algorithm>
#include <cmath>

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

JsonKey::JsonKey(std::string_view name)
{
    rapidjson::StringBuffer quoted;
    Writer(quoted).String(name.data(), static_cast<rapidjson::SizeType>(name.size()));
    text.push_back(',');
    text.append(quoted.GetString(), quoted.GetSize()).append(":");
    size = text.size();
    text.resize(std::max(size, block), ' ');
}

void JsonText::real(double value)
{
    if (!std::isfinite(value)) {
        null();
        return;
    }
    scratch.Clear();
    Writer(scratch).Double(value);
    append({scratch.GetString(), scratch.GetSize()});
}

void JsonText::string(std::string_view utf8)
{
    scratch.Clear();
    Writer(scratch).String(utf8.data(), static_cast<rapidjson::SizeType>(utf8.size()));
    append({scratch.GetString(), scratch.GetSize()});
}
