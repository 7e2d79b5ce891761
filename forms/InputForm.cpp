#include "forms/InputForm.h"

#include "forms/AisReader.h"
#include "forms/AisWriter.h"
#include "forms/AutoReader.h"
#include "forms/HexReader.h"
#include "forms/HexWriter.h"
#include "forms/PackedWriter.h"
#include "forms/StreamPacketWriter.h"
#include "forms/StreamReader.h"
#include "forms/UnitReader.h"
#include "forms/WordsWriter.h"

#include <algorithm>
#include <array>

namespace {

struct FormRow {
    const char* name;
    InputForm form;
    bool isText;
    const char* about;
    std::unique_ptr<PacketReader> (*reader)(std::uint64_t firstByte);
    std::unique_ptr<PacketWriter> (*writer)();
};

template <class Reader>
std::unique_ptr<PacketReader> readerOf(std::uint64_t firstByte)
{
    return std::make_unique<Reader>(firstByte);
}

template <const UnitForm& unitForm>
std::unique_ptr<PacketReader> unitReaderOf(std::uint64_t firstByte)
{
    return std::make_unique<UnitReader>(unitForm, firstByte);
}

std::unique_ptr<PacketReader> autoReader(std::uint64_t)
{
    return std::make_unique<AutoReader>();
}

template <class Writer>
std::unique_ptr<PacketWriter> writerOf()
{
    return std::make_unique<Writer>();
}

constexpr std::array<FormRow, inputFormCount> forms = {{
    {"auto", InputForm::automatic, false, "finds out from the first bytes", autoReader,
     writerOf<StreamPacketWriter>},
    {"stream", InputForm::stream, false, "as it is sent: 6 bits a byte, with parity",
     readerOf<StreamReader>, writerOf<StreamPacketWriter>},
    {"packed", InputForm::packed, false, "8 bits a byte, without parity", unitReaderOf<packedUnits>,
     writerOf<PackedWriter>},
    {"hex", InputForm::hex, true, "packed, a message a line", readerOf<HexReader>,
     writerOf<HexWriter>},
    {"words", InputForm::words, false, "a receiver's own recording", unitReaderOf<recordedUnits>,
     writerOf<WordsWriter>},
    {"aivdm", InputForm::aivdm, true, "AIS message 17, in sentences", readerOf<AisReader>,
     writerOf<AisWriter>},
}};

const FormRow& rowOf(InputForm form)
{
    return *std::find_if(forms.begin(), forms.end(),
                         [&](const FormRow& row) { return row.form == form; });
}

}    // namespace

std::optional<InputForm> inputFormOf(std::string_view name)
{
    const auto* const found = std::find_if(forms.begin(), forms.end(),
                                           [&](const FormRow& row) { return row.name == name; });
    return found != forms.end() ? std::optional(found->form) : std::nullopt;
}

const char* nameOf(InputForm form)
{
    return rowOf(form).name;
}

const char* aboutForm(InputForm form)
{
    return rowOf(form).about;
}

bool isText(InputForm form)
{
    return rowOf(form).isText;
}

std::unique_ptr<PacketReader> makeReader(InputForm form, std::uint64_t firstByte)
{
    return rowOf(form).reader(firstByte);
}

std::unique_ptr<PacketWriter> makeWriter(InputForm form)
{
    return rowOf(form).writer();
}
