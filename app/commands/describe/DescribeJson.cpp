#include "commands/describe/DescribeView.h"

#include "FieldInfo.h"
#include "MessageInfo.h"
#include "base/Names.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace describe {

namespace {

class JsonDescription {
public:
    JsonDescription() { writer.SetIndent(' ', 2); }

    std::string run(const FormatModel& format, const Kinds& kinds)
    {
        writer.StartObject();
        member("format", format.name());
        writer.Key("kinds");
        writer.StartArray();
        for (const KindModel* kind : kinds) {
            writeKind(format, *kind);
        }
        writer.EndArray();
        writer.EndObject();
        return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
    }

private:
    void text(const std::string& value)
    {
        writer.String(value.data(), static_cast<rapidjson::SizeType>(value.size()));
    }

    void member(const char* key, const std::string& value)
    {
        writer.Key(key);
        text(value);
    }

    void member(const char* key, bool value)
    {
        writer.Key(key);
        writer.Bool(value);
    }

    void member(const char* key, int value)
    {
        writer.Key(key);
        writer.Int(value);
    }

    void member(const char* key, const FieldValue& value)
    {
        writer.Key(key);
        switch (value.getKind()) {
        case FieldType::Signed:
            writer.Int64(value.toSigned());
            break;
        case FieldType::Float64:
            writer.Double(value.toDouble());
            break;
        case FieldType::Character:
            writer.Uint(static_cast<unsigned char>(value.toCharacter()));
            break;
        default:
            writer.Uint64(value.toUnsigned());
            break;
        }
    }

    void writeKind(const FormatModel& format, const KindModel& kind)
    {
        writer.StartObject();
        member("name", kind.name);
        member("identifier", identifierOf(kind.name));
        member("text", kind.text);
        member("main", kind.isMain);
        if (kind.typeNumber >= 0) {
            member("number", kind.typeNumber);
        }
        writeDiscriminants(kind);
        writeCarriers(format, kind);
        writer.Key("fields");
        writer.StartArray();
        for (const FieldModel& field : kind.fields) {
            writeField(field);
        }
        writer.EndArray();
        writer.EndObject();
    }

    void writeDiscriminants(const KindModel& kind)
    {
        writer.Key("discriminants");
        writer.StartArray();
        for (const MessageInfo::Discriminant& discriminant : kind.info->getDiscriminantValues()) {
            writer.StartObject();
            member("field", identifierOf(discriminant.first->getName().toStdString()));
            member("value", discriminant.second);
            writer.EndObject();
        }
        writer.EndArray();
    }

    void writeCarriers(const FormatModel& format, const KindModel& kind)
    {
        writer.Key("carriers");
        writer.StartArray();
        for (const Carrier& carrier : carriersOf(format, kind)) {
            writer.StartObject();
            member("kind", identifierOf(carrier.kind->name));
            member("field", carrier.field->identifier);
            writer.EndObject();
        }
        writer.EndArray();
    }

    void writeField(const FieldModel& field)
    {
        writer.StartObject();
        member("index", field.index);
        member("name", field.name);
        member("identifier", field.identifier);
        member("type", std::string(typeName(field.info->getType().getKind())));
        member("width", int{field.info->getType().getWidth()});
        if (field.element != nullptr) {
            member("kind", identifierOf(field.element->name));
        }
        member("unit", field.unit);
        member("optional", field.isOptional());
        member("repeated", field.isRepeated());
        member("virtual", field.info->isVirtual());
        writeParts(field);
        writeTexts(field);
        if (field.info->hasDoNotUseValue()) {
            member("doNotUse", field.info->getDoNotUseValue());
        }
        writer.EndObject();
    }

    void writeParts(const FieldModel& field)
    {
        writer.Key("parts");
        writer.StartArray();
        for (const std::string& name : partNames(field)) {
            text(identifierOf(name));
        }
        writer.EndArray();
    }

    void writeTexts(const FieldModel& field)
    {
        writer.Key("texts");
        writer.StartArray();
        for (const FieldInfo::SymbolicValue& symbolic : field.info->getSymbolicValues()) {
            writer.StartObject();
            member("value", symbolic.first);
            member("text", symbolic.second.toStdString());
            writer.EndObject();
        }
        writer.EndArray();
    }

    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer{buffer};
};

}    // namespace

std::string json(const FormatModel& format, const Kinds& kinds)
{
    return JsonDescription().run(format, kinds);
}

}    // namespace describe
