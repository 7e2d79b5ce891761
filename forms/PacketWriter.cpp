#include "forms/PacketWriter.h"

#include "framing/Frame.h"
#include "framing/StreamWriter.h"
#include "framing/parity.h"

namespace {

class StreamForm : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override
    {
        return writer.append(packed, out);
    }

private:
    framing::StreamWriter writer;
};

class PackedForm : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override
    {
        if (!framing::isWholeMessage(packed)) {
            return false;
        }
        out.insert(out.end(), packed.begin(), packed.end());
        return true;
    }
};

class HexForm : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override
    {
        if (!framing::isWholeMessage(packed)) {
            return false;
        }
        static constexpr char digits[] = "0123456789abcdef";
        for (const std::uint8_t byte : packed) {
            out.push_back(static_cast<std::uint8_t>(digits[byte >> 4]));
            out.push_back(static_cast<std::uint8_t>(digits[byte & 0xF]));
        }
        out.push_back('\n');
        return true;
    }
};

// Parity as the words have it in a stream; the data bits always upright.
class WordsForm : public PacketWriter {
public:
    bool append(std::span<const std::uint8_t> packed, std::vector<std::uint8_t>& out) override
    {
        if (!framing::isWholeMessage(packed)) {
            return false;
        }
        for (std::size_t i = 0; i < packed.size(); i += framing::bytesPerWord) {
            const auto data =
                static_cast<std::uint32_t>(packed[i] << 16 | packed[i + 1] << 8 | packed[i + 2]);
            lastWord = framing::encodeWord(data, lastWord);
            const std::uint32_t unit = data << 6 | (lastWord & 0x3F);
            for (int shift = 0; shift < 32; shift += 8) {
                out.push_back(static_cast<std::uint8_t>(unit >> shift));
            }
        }
        return true;
    }

private:
    std::uint32_t lastWord = 0;
};

}    // namespace

std::unique_ptr<PacketWriter> makeWriter(InputForm form)
{
    switch (form) {
    case InputForm::packed:
        return std::make_unique<PackedForm>();
    case InputForm::hex:
        return std::make_unique<HexForm>();
    case InputForm::words:
        return std::make_unique<WordsForm>();
    case InputForm::automatic:
    case InputForm::stream:
        break;
    }
    return std::make_unique<StreamForm>();
}

bool isText(InputForm form)
{
    return form == InputForm::hex;
}
