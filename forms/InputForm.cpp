#include "forms/InputForm.h"

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

constexpr std::array<FormRow, 5> forms = {{
    {"auto", InputForm::automatic, false, autoReader, writerOf<StreamPacketWriter>},
    {"stream", InputForm::stream, false, readerOf<StreamReader>, writerOf<StreamPacketWriter>},
    {"packed", InputForm::packed, false, unitReaderOf<packedUnits>, writerOf<PackedWriter>},
    {"hex", InputForm::hex, true, readerOf<HexReader>, writerOf<HexWriter>},
    {"words", InputForm::words, false, unitReaderOf<recordedUnits>, writerOf<WordsWriter>},
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
