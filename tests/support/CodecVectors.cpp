#include "support/CodecVectors.h"

#include "support/SlowBits.h"

#include <algorithm>
#include <cctype>
#include <fstream>
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
    explicit VectorReader(const std::string& path) : m_input(path)
    {
        if (!m_input) {
            throw std::runtime_error("cannot read " + path);
        }
    }

    std::vector<CodecVector> read()
    {
        for (std::string line; std::getline(m_input, line);) {
            std::istringstream words(line);
            std::string key;
            words >> key;
            if (!key.empty() && key[0] != '#') {
                readLine(key, words, line);
            }
        }
        finish();
        return std::move(m_vectors);
    }

private:
    void readLine(const std::string& key, std::istringstream& words, const std::string& line)
    {
        if (key == "message") {
            finish();
            m_vectors.emplace_back();
            m_vectors.back().title = line.substr(key.size() + 1);
        } else if (key == "type") {
            words >> m_vectors.back().type;
            m_kind = "MESSAGE_TYPE_" + std::to_string(m_vectors.back().type);
            readHeader(words);
        } else if (key == "wire") {
            readMembers(words, "", m_kind);
        } else if (key == "also") {
            readMembers(words, "", "");
        } else if (key == "text") {
            readText(words);
        } else if (key == "bytes") {
            for (std::string byte; words >> byte;) {
                m_vectors.back().bytes.push_back(
                    static_cast<std::uint8_t>(std::stoul(byte, nullptr, 16)));
            }
        } else {
            readElement(key, words);
        }
    }

    void add(const std::string& path, const std::string& error, unsigned width, double value)
    {
        CodecVector& vector = m_vectors.back();
        (width == 0 ? vector.derived : vector.wire)
            .push_back({path, error, width, value, vector.elements});
        vector.bits += width;
    }

    // Preamble, station, Z-count, sequence, words, health.
    void readHeader(std::istringstream& words)
    {
        const std::pair<const char*, unsigned> members[] = {{"Reference_Station_Id", 10},
                                                            {"Modified_Z_Count", 13},
                                                            {"Sequence_No_", 3},
                                                            {"No_Of_Data_Words", 5},
                                                            {"Station_Health", 3}};
        unsigned value = 0;
        words >> std::hex >> value >> std::dec;
        add("Preamble", errorName(m_kind, "Preamble"), 8, value);
        add("Message_Type", errorName(m_kind, "Message_Type"), 6, m_vectors.back().type);
        for (const auto& [member, width] : members) {
            words >> value;
            add(member, errorName(m_kind, member), width, value);
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

    // "Corrections:DGNSS" and the members of the next element.
    void readElement(const std::string& key, std::istringstream& words)
    {
        const std::size_t colon = key.find(':');
        if (colon == std::string::npos) {
            throw std::runtime_error("unknown line " + key);
        }
        const std::string prefix =
            key.substr(0, colon) + "." + std::to_string(m_vectors.back().elements) + ".";
        readMembers(words, prefix, key.substr(colon + 1));
        ++m_vectors.back().elements;
    }

    // The bytes follow from the members where the file does not give them.
    void finish()
    {
        if (m_vectors.empty() || !m_vectors.back().bytes.empty()) {
            return;
        }
        CodecVector& vector = m_vectors.back();
        vector.bytes.resize((std::size_t{vector.bits} + 23) / 24 * 3);
        unsigned offset = 0;
        for (const WireMember& member : vector.wire) {
            slow::write(vector.bytes, offset, member.width,
                        static_cast<std::uint64_t>(static_cast<std::int64_t>(member.value)));
            offset += member.width;
        }
    }

    std::ifstream m_input;
    std::string m_kind;
    std::vector<CodecVector> m_vectors;
};

}    // namespace

std::vector<CodecVector> readCodecVectors(const std::string& name)
{
    return VectorReader(std::string(RTCM2_TEST_VECTORS) + "/" + name).read();
}
