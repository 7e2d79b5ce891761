// Messages as data: what stands on the wire, member by member, and what the record holds besides.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

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
    int type = 0;
    std::vector<WireMember> wire;
    std::vector<WireMember> derived;    // members that are not on the wire
    std::vector<std::uint8_t> bytes;    // the message, filled up to whole words
    unsigned bits = 0;                  // of all wire members
    unsigned elements = 0;

    // How a test that takes a vector as its parameter is listed.
    friend std::ostream& operator<<(std::ostream& out, const CodecVector& vector)
    {
        return out << vector.title;
    }
};

// Reads tests/vectors/codec.txt, whose head tells the format. Throws std::runtime_error.
std::vector<CodecVector> readCodecVectors();
