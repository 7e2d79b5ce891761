// Description of one message kind.
#pragma once

#include "FieldValue.h"
#include "HostExport.h"

#include <QPair>
#include <QString>
#include <QVector>

class FieldInfo;
class FormatInfo;

// The plug-in derives one class per message kind and fills the description while it is constructed;
// afterwards a MessageInfo never changes. Descriptors belong to the plug-in.
class HOST_FRAMEWORK_EXPORT MessageInfo {
public:
    // A field whose value identifies the kind, with that value.
    using Discriminant = QPair<const FieldInfo*, FieldValue>;

    MessageInfo(const MessageInfo&) = delete;
    MessageInfo& operator=(const MessageInfo&) = delete;

    const QString& getName() const { return name; }
    const FormatInfo* getFormatInfo() const { return formatInfo; }
    // A kind is main unless told otherwise; the others occur as parts of main messages only.
    bool isMain() const { return main; }
    // Empty where the kind has none.
    const QString& getShortDescriptiveText() const { return shortDescriptiveText; }
    // The fields in the order of their indices.
    const QVector<const FieldInfo*>& getFieldInfos() const { return fieldInfos; }
    // The flag that came with the field of this index when it was added.
    bool getFieldFlag(int index) const { return fieldFlags.value(index); }
    const QVector<Discriminant>& getDiscriminantValues() const { return discriminantValues; }

protected:
    explicit MessageInfo(QString name);
    virtual ~MessageInfo();

    void setFormatInfo(const FormatInfo* info) { formatInfo = info; }
    void setIsMain(bool value) { main = value; }
    void setShortDescriptiveText(QString text) { shortDescriptiveText = text; }
    // Adds the field at the index, which must be the number of fields added before. The field may
    // still be under construction: only its address is kept.
    void addFieldInfo(FieldInfo* field, int index, bool flag);
    void addDiscriminantValue(const FieldInfo* field, const FieldValue& value);

private:
    QString name;
    const FormatInfo* formatInfo = nullptr;
    bool main = true;
    QString shortDescriptiveText;
    QVector<const FieldInfo*> fieldInfos;
    QVector<bool> fieldFlags;
    QVector<Discriminant> discriminantValues;
};
