#include "QLX_DiffCorrIn_MessageInfo.h"

#include "FieldInfo.h"
#include "FormatInfo.h"
#include "QLX_DiffCorrIn_Message.h"
#include "VorloEvent.h"

namespace {

class QLX_FormatInfo : public FormatInfo {
public:
    explicit QLX_FormatInfo(const MessageInfo* block) : FormatInfo(QStringLiteral("QLX"))
    {
        addMessageInfo(block);
    }
};

// What the fields of the block have in common: presence and misuse follow from the count.
class QLX_FieldInfo : public FieldInfo {
public:
    bool isPresent(const Message* message) const override { return getCount(message) > 0; }

    unsigned int getCount(const Message* message) const override
    {
        const auto* block = dynamic_cast<const QLX_DiffCorrIn_Message*>(message);
        return block ? getCountIn(*block) : 0;
    }

    const FieldValue getValue(const Message* message, unsigned int index) const override
    {
        if (index >= getCount(message)) {
            throw VorloEvent(VorloEvent::AccessorMisuse,
                             QStringLiteral("Requesting value %1 of the field %2, which the "
                                            "message does not have.")
                                 .arg(index)
                                 .arg(getName()),
                             QLX_DiffCorrIn_MessageInfo::getInstance()->getFormatInfo());
        }
        return getValueUnchecked(message, index);
    }

    const FieldValue getValueUnchecked(const Message* message, unsigned int index) const override
    {
        return getValueIn(*static_cast<const QLX_DiffCorrIn_Message*>(message), index);
    }

protected:
    QLX_FieldInfo(QString fieldName, const FieldType& fieldType) : FieldInfo(fieldName, fieldType)
    {
        setRole(Data);
    }

private:
    virtual unsigned int getCountIn(const QLX_DiffCorrIn_Message& block) const = 0;
    virtual FieldValue getValueIn(const QLX_DiffCorrIn_Message& block,
                                  unsigned int index) const = 0;
};

class ModeFieldInfo : public QLX_FieldInfo {
public:
    ModeFieldInfo() : QLX_FieldInfo(QStringLiteral("Mode"), FieldType::u(8))
    {
        setIsOptional(true);
    }

    QString getInterpretedString(const Message* message, unsigned int index, bool) const override
    {
        return QString::number(getValueUnchecked(message, index).toUnsigned());
    }

private:
    unsigned int getCountIn(const QLX_DiffCorrIn_Message& block) const override
    {
        return block.getMode() ? 1 : 0;
    }

    FieldValue getValueIn(const QLX_DiffCorrIn_Message& block, unsigned int) const override
    {
        return FieldValue::u(block.getMode().value_or(0), 8);
    }
};

class DataFieldInfo : public QLX_FieldInfo {
public:
    DataFieldInfo() : QLX_FieldInfo(QStringLiteral("Data"), FieldType::byte())
    {
        setIsRepeated(true);
    }

    QString getInterpretedString(const Message* message, unsigned int index, bool) const override
    {
        return QStringLiteral("0x%1").arg(getValueUnchecked(message, index).toUnsigned(), 2, 16,
                                          QLatin1Char('0'));
    }

private:
    unsigned int getCountIn(const QLX_DiffCorrIn_Message& block) const override
    {
        return static_cast<unsigned int>(block.getPayload().size());
    }

    FieldValue getValueIn(const QLX_DiffCorrIn_Message& block, unsigned int index) const override
    {
        const char data = block.getPayload().at(static_cast<int>(index));
        return FieldValue::byte(static_cast<unsigned char>(data));
    }
};

}    // namespace

QLX_DiffCorrIn_MessageInfo::QLX_DiffCorrIn_MessageInfo() : MessageInfo(QStringLiteral("DiffCorrIn"))
{
    static const QLX_FormatInfo format(this);
    static ModeFieldInfo mode;
    static DataFieldInfo data;

    setFormatInfo(&format);
    setShortDescriptiveText(QStringLiteral("Differential corrections received"));
    addFieldInfo(&mode, 0, false);
    addFieldInfo(&data, 1, false);
}

QLX_DiffCorrIn_MessageInfo::~QLX_DiffCorrIn_MessageInfo() = default;

const QLX_DiffCorrIn_MessageInfo* QLX_DiffCorrIn_MessageInfo::getInstance()
{
    static const QLX_DiffCorrIn_MessageInfo instance;
    return &instance;
}
