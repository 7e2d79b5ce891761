// The JSON library's writer with keys that are prepared once.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cmath>
#include <cstring>
#include <string>
#include <string_view>

class JsonWriter : public rapidjson::Writer<rapidjson::StringBuffer> {
public:
    using Writer::String;
    using Writer::Writer;

    bool String(std::string_view text)
    {
        return Writer::String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    }

    // What key() takes for a name.
    static std::string preparedKey(std::string_view name)
    {
        rapidjson::StringBuffer buffer;
        JsonWriter(buffer).String(name);
        return buffer.GetString();
    }

    void key(std::string_view prepared)
    {
        Prefix(rapidjson::kStringType);
        std::memcpy(os_->Push(prepared.size()), prepared.data(), prepared.size());
    }

    // What is no number in JSON becomes null.
    void real(double value) { std::isfinite(value) ? Double(value) : Null(); }
};
