// A format as the commands see it: everything here is learnt from descriptors, once, at the start.
#pragma once

#include "FieldType.h"

#include <QHash>
#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class FieldInfo;
class FormatInfo;
class Message;
class MessageInfo;

struct KindModel;

// One field of a kind.
struct FieldModel {
    const FieldInfo* info = nullptr;
    int index = 0;
    std::string name;    // display name, UTF-8
    std::string
        identifier;      // the display name as one word: what is no letter or digit becomes "_"
    std::string unit;    // empty where there is none
    FieldType::Kind type = FieldType::Byte;
    bool repeated = false;
    bool optional = false;
    const KindModel* element = nullptr;    // kind of the elements of a sub-message field
    bool hasTexts = false;                 // some values have a text of their own

    bool isText() const { return repeated && type == FieldType::Character; }
};

// One message kind. A main kind of a format with type numbers has one, taken from the value that
// identifies it.
struct KindModel {
    const MessageInfo* info = nullptr;
    std::string name;
    std::string text;    // short description; empty where there is none
    bool isMain = true;
    int typeNumber = -1;
    std::vector<FieldModel> fields;

    // The field of this display name or identifier, regardless of case; null when there is none.
    const FieldModel* field(std::string_view nameOrIdentifier) const;
};

class FormatModel {
public:
    // The format's descriptors must outlive the model.
    explicit FormatModel(const FormatInfo* format);
    FormatModel(const FormatModel&) = delete;
    FormatModel& operator=(const FormatModel&) = delete;

    const std::string& name() const { return formatName; }
    // Main kinds, then sub-message kinds, each in the order of their registration.
    const std::vector<std::unique_ptr<KindModel>>& kinds() const { return allKinds; }
    // The kind of a message or of a descriptor; null for those of another format.
    const KindModel* kindOf(const Message& message) const;
    const KindModel* kindOf(const MessageInfo* info) const { return byInfo.value(info, nullptr); }
    // The kind of this name, identifier or type number, regardless of case; null when there is
    // none.
    const KindModel* kind(std::string_view nameOrNumber) const;

private:
    void addKind(const MessageInfo* info);
    void addFields(KindModel& kind) const;

    std::string formatName;
    std::vector<std::unique_ptr<KindModel>> allKinds;
    QHash<const MessageInfo*, KindModel*> byInfo;
};
