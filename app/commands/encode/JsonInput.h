// The JSON objects of an input, one after another: one a line, in an array, or simply in a row.
#pragma once

#include "commands/encode/JsonCharacters.h"

#include <rapidjson/document.h>
#include <rapidjson/reader.h>

#include <cstdint>
#include <string>
#include <vector>

class InputFile;

// Memory is needed for one object at a time. After a mistake reading goes on with the next line
// that an object begins, so that one bad line costs no other. Lines that begin objects around the
// mistake count as one bad line: they would end at the same mistake, and reading them again and
// again would take long.
class JsonInput {
public:
    // The file must outlive the reader.
    explicit JsonInput(InputFile& file) : characters(file) {}

    // Goes to the next object or mistake. False at the end of the input.
    [[nodiscard]] bool next();

    // What is wrong instead of an object, with its place; empty when there is an object.
    const std::string& problem() const { return problemText; }
    // The object, until the next call.
    const rapidjson::Value& object() const { return document; }
    // The line in which it begins, from 1.
    std::uint64_t line() const { return beginLine; }
    std::uint64_t bytesRead() const { return characters.bytesRead(); }

private:
    bool findObject();
    void parse();
    void complain(const std::string& reason, std::size_t offset);

    JsonCharacters characters;
    rapidjson::MemoryPoolAllocator<> pool;
    rapidjson::Document document{&pool};
    rapidjson::Reader reader;
    std::vector<std::size_t> open;    // where objects and arrays begin that are not complete
    std::string problemText;
    std::uint64_t beginLine = 0;
    bool inArray = false;
};
