// Reads messages again that are in an index.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/MessageDetail.h"
#include "viewer/document/MessageIndex.h"

#include "filter/MessageFilter.h"
#include "forms/FormSearch.h"
#include "plugin/Decoding.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

// Used by one thread at a time.
class MessageReader {
public:
    using Take = std::function<void(std::size_t place, const Found& found)>;
    using Stop = std::function<bool()>;

    // `readAgain` is a file, and the index that of its messages. Both belong to the caller, like
    // the model.
    MessageReader(const FormatModel& model, Input readAgain, const MessageIndex& read);

    // Gives those of the messages from one place to another (one past the last) that are still
    // there, in any order.
    void read(std::size_t from, std::size_t until, const Take& take, const Stop& stop);
    // Gives these messages with their numbers in the input, in their order.
    void read(const std::vector<std::size_t>& places, const Take& take, const Stop& stop);
    // Everything about one message. Where it is not there any more, the text says so.
    MessageDetail detail(std::size_t place);

    // Why something could not be read the last time, for people; empty where it could.
    const std::string& problem() const { return problemText; }

private:
    const FormSearch* search();
    std::size_t placeOf(const Found& found, std::size_t from, std::size_t until) const;
    std::vector<AirWord> wordsOf(const IndexEntry& entry);

    const FormatModel& formatModel;
    Input input;
    const MessageIndex& index;
    Decoding decoding;
    MessageFilter all;
    std::unique_ptr<FormSearch> formSearch;
    std::string problemText;
};
