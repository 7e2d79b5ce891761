// JSON for people and programs: indented, written piece by piece.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

class JsonWriter {
public:
    JsonWriter() { writer.SetIndent(' ', 2); }

    void beginObject() { writer.StartObject(); }
    void endObject() { writer.EndObject(); }
    void beginArray(const char* name)
    {
        key(name);
        writer.StartArray();
    }
    void endArray() { writer.EndArray(); }

    void key(const char* name) { writer.Key(name); }
    // Texts in UTF-8, numbers, or true and false.
    template <class Value>
    void value(const Value& content)
    {
        if constexpr (std::is_same_v<Value, bool>) {
            writer.Bool(content);
        } else if constexpr (std::is_floating_point_v<Value>) {
            writer.Double(content);
        } else if constexpr (std::is_unsigned_v<Value>) {
            writer.Uint64(content);
        } else if constexpr (std::is_integral_v<Value>) {
            writer.Int64(content);
        } else {
            const std::string_view text = content;
            writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
        }
    }
    // Null where there is none.
    template <class Value>
    void value(const std::optional<Value>& content)
    {
        content ? value(*content) : static_cast<void>(writer.Null());
    }

    template <class Value>
    void member(const char* name, const Value& content)
    {
        key(name);
        value(content);
    }

    // A number that is written as it stands in the text.
    void number(const char* name, const std::string& text)
    {
        key(name);
        writer.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    }

    // An array with one object for each item, whose members `writeMembers` writes.
    template <class Items, class Function>
    void objects(const char* name, const Items& items, Function writeMembers)
    {
        beginArray(name);
        for (const auto& item : items) {
            beginObject();
            writeMembers(item);
            endObject();
        }
        endArray();
    }

    // What was written since the last time, and a line end after all of it.
    std::string take()
    {
        std::string text(buffer.GetString(), buffer.GetSize());
        buffer.Clear();
        return writer.IsComplete() ? text + "\n" : text;
    }

private:
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer{buffer};
};
