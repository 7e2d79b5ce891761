// Messages as data: what stands on the wire, member by member, and what the record holds besides.
#pragma once

#include "support/CodecKinds.h"
#include "support/SlowBits.h"

#include <cctype>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

struct WireMember {
    std::string path;     // "PRC" of element 0 is "Corrections.0.PRC"
    std::string error;    // name of the code for a buffer that ends before it
    unsigned width;       // bits; 0 for members that follow from others
    unsigned end;         // the bit of the message after it
    double value;
    unsigned element;    // elements of the array before it
};

struct CodecVector {
    std::string title;
    const RTCM2_kind_s* kind = nullptr;
    std::vector<WireMember> wire;
    std::vector<WireMember> derived;    // members that are not on the wire
    Bytes bytes;                        // the message, filled up to whole words
    unsigned bits = 0;                  // of all wire members
    unsigned elements = 0;

    void add(const std::string& prefix, const std::string& owner, std::string member,
             unsigned width, double value, const std::string& suffix = "")
    {
        (width == 0 ? derived : wire)
            .push_back({prefix + member + suffix, "", width, bits + width, value, elements});
        // In capitals and without the last underscore.
        member.resize(member.find_last_not_of('_') + 1);
        for (const char c : "RTCM2_ERR_" + owner + "_" + member + "_EXT_BUFFER_OVERFLOW") {
            (width == 0 ? derived : wire).back().error +=
                static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
        }
        bytes.resize((std::size_t{bits} + width + 23) / 24 * 3);
        slow::write(bytes, bits, width,
                    static_cast<std::uint64_t>(static_cast<std::int64_t>(value)));
        bits += width;
    }

    // One line behind its first word.
    void read(const std::string& key, std::istringstream& words)
    {
        const std::size_t colon = key.find(':');
        const bool isElement = colon != std::string::npos;
        const std::string prefix =
            isElement ? key.substr(0, colon) + "." + std::to_string(elements) + "." : "";
        const std::string owner = isElement ? key.substr(colon + 1) : kind->name;
        std::string text, word;
        for (unsigned i = key == "text" && words >> text ? 0 : 1; words >> word; ++i) {
            char member[64];
            unsigned width = 0;
            double value = 0;
            if (key == "text") {
                const auto byte = static_cast<std::uint8_t>(std::stoul(word, nullptr, 16));
                const bool isSigned =
                    RTCM2_find_member(kind, text.c_str())->type == RTCM2_TYPE_CHARACTER;
                add("", owner, text, 8, isSigned ? static_cast<std::int8_t>(byte) : byte,
                    "." + std::to_string(i));
            } else if (std::sscanf(word.c_str(), "%63[^:=]:%u=%lf", member, &width, &value) == 3 ||
                       std::sscanf(word.c_str(), "%63[^:=]=%lf", member, &value) == 2) {
                add(prefix, owner, member, width, value);
            } else {
                throw std::runtime_error("not a member: " + word);
            }
        }
        elements += isElement ? 1 : 0;
    }

    // How a test that takes a vector as its parameter is listed.
    friend std::ostream& operator<<(std::ostream& out, const CodecVector& vector)
    {
        return out << vector.title;
    }
};

// Reads tests/vectors/codec.txt, whose head tells the format.
inline std::vector<CodecVector> readCodecVectors()
{
    std::ifstream input(RTCM2_TEST_VECTORS);
    std::vector<CodecVector> vectors;
    for (std::string line, key; std::getline(input, line);) {
        std::istringstream words(line);
        if (!(words >> key) || key[0] == '#') {
            continue;
        }
        if (key == "message") {
            CodecVector& vector = vectors.emplace_back();
            int values[7] = {};
            for (int& value : values) {
                words >> value;
            }
            std::getline(words >> std::ws, vector.title);
            vector.kind = &mainKind(values[1]);
            for (unsigned i = 0; i < 7; ++i) {
                const RTCM2_member_s& member = vector.kind->members[i];
                constexpr unsigned widths[] = {8, 6, 10, 13, 3, 5, 3};
                vector.add("", vector.kind->name, member.name, widths[i], values[i]);
            }
        } else {
            vectors.back().read(key, words);
        }
    }
    return vectors;
}
