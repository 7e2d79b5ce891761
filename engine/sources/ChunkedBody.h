// Takes the chunks of HTTP/1.1 apart.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

class ChunkedBody {
public:
    // Appends the data among the bytes that come next. False behind a byte that breaks the rules,
    // as problem() says, and behind the last chunk; what came before is appended all the same.
    bool push(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t>& data);

    bool isAtEnd() const { return place == Place::end; }
    const std::string& problem() const { return problemText; }

private:
    enum class Place {
        size,
        extension,
        sizeEnd,
        data,
        dataEnd,
        dataLineEnd,
        trailer,
        trailerEnd,
        end
    };

    void take(std::uint8_t byte);
    void takeSize(std::uint8_t byte);
    void takeTrailer(std::uint8_t byte);
    void require(bool holds, Place next);

    Place place = Place::size;
    std::uint64_t left = 0;       // of the chunk
    unsigned digits = 0;          // of its size
    std::size_t lineBytes = 0;    // of an extension or of the trailers
    bool isEmptyLine = true;      // so far, of the trailers
    std::string problemText;
};
