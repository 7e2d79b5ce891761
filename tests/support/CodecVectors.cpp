#include "support/CodecVectors.h"

#include "support/SlowBits.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace {

// The error name's part for a member: in capitals and without the last underscore.
std::string errorName(const std::string& kind, std::string member)
{
    if (member.ends_with('_')) {
        member.pop_back();
    }
    for (char& c : member) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return "RTCM2_ERR_" + kind + "_" + member + "_EXT_BUFFER_OVERFLOW";
}

class VectorReader {
public:
    explicit VectorReader(std::istream& input)
    {
        for (std::string line; std::getline(input, line);) {
            std::istringstream words(line);
            std::string key;
            words >> key;
            if (!key.empty() && key[0] != '#') {
                readLine(key, words);
            }
        }
    }

    std::vector<CodecVector> vectors;

private:
    void readLine(const std::string& key, std::istringstream& words)
    {
        const std::size_t colon = key.find(':');
        if (key == "message") {
            readHeader(words);
        } else if (key == "wire") {
            readMembers(words, "", m_kind);
        } else if (key == "text") {
            readText(words);
        } else if (colon != std::string::npos) {
            const std::string element = std::to_string(vectors.back().elements);
            readMembers(words, key.substr(0, colon) + "." + element + ".", key.substr(colon + 1));
            ++vectors.back().elements;
        } else {
            throw std::runtime_error("unknown line " + key);
        }
    }

    void add(const std::string& path, const std::string& error, unsigned width, double value)
    {
        CodecVector& vector = vectors.back();
        (width == 0 ? vector.derived : vector.wire)
            .push_back({path, error, width, vector.bits + width, value, vector.elements});
        vector.bytes.resize((std::size_t{vector.bits} + width + 23) / 24 * 3);
        slow::write(vector.bytes, vector.bits, width,
                    static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
        vector.bits += width;
    }

    void readHeader(std::istringstream& words)
    {
        const std::pair<const char*, unsigned> members[] = {
            {"Preamble", 8},          {"Message_Type", 6}, {"Reference_Station_Id", 10},
            {"Modified_Z_Count", 13}, {"Sequence_No_", 3}, {"No_Of_Data_Words", 5},
            {"Station_Health", 3}};
        int values[std::size(members)] = {};
        for (int& value : values) {
            words >> value;
        }
        CodecVector& vector = vectors.emplace_back();
        vector.type = values[1];
        std::getline(words >> std::ws, vector.title);
        m_kind = "MESSAGE_TYPE_" + std::to_string(values[1]);
        for (std::size_t i = 0; i < std::size(members); ++i) {
            const auto& [member, width] = members[i];
            add(member, errorName(m_kind, member), width, values[i]);
        }
    }

    // member:width=value, or member=value for what is not on the wire.
    void readMembers(std::istringstream& words, const std::string& prefix, const std::string& kind)
    {
        for (std::string word; words >> word;) {
            const std::size_t equals = word.find('=');
            const std::size_t colon = std::min(word.find(':'), equals);
            if (equals == std::string::npos) {
                throw std::runtime_error("not a member: " + word);
            }
            const std::string member = word.substr(0, colon);
            const unsigned width =
                colon == equals ? 0 : static_cast<unsigned>(std::stoul(word.substr(colon + 1)));
            add(prefix + member, errorName(kind, member), width,
                std::stod(word.substr(equals + 1)));
        }
    }

    void readText(std::istringstream& words)
    {
        std::string member;
        words >> member;
        unsigned i = 0;
        for (std::string byte; words >> byte; ++i) {
            add(member + "." + std::to_string(i), errorName(m_kind, member), 8,
                static_cast<double>(std::stoul(byte, nullptr, 16)));
        }
    }

    std::string m_kind;
};

}    // namespace

std::vector<CodecVector> readCodecVectors()
{
    std::ifstream input(RTCM2_TEST_VECTORS);
    if (!input) {
        throw std::runtime_error("cannot read " RTCM2_TEST_VECTORS);
    }
    return VectorReader(input).vectors;
}
