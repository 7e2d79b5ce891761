// Looks for a text in what the rows of messages say.
#pragma once

#include "viewer/document/Input.h"
#include "viewer/document/MessageIndex.h"
#include "viewer/document/Pass.h"

#include "format/FormatModel.h"

#include <atomic>
#include <memory>
#include <optional>
#include <string>

class MessageReader;
class RowText;

class SearchPass {
public:
    struct Options {
        std::string text;         // in any case of letters
        std::size_t start = 0;    // the place to begin behind, or before
        bool backwards = false;
    };

    // Begins to look among the chosen messages, or all where that is null, and goes on at the other
    // end of the index. Everything belongs to the caller.
    SearchPass(const FormatModel& model, const Input& file, const MessageIndex& read,
               std::shared_ptr<const Selection> chosen, const Options& searched);

    bool isFinished() const { return pass.isFinished(); }
    void cancel() { pass.cancel(); }
    // Once it is finished: where the text stands; nothing where it stands nowhere.
    std::optional<std::size_t> found() const;
    // Messages that were looked at.
    std::size_t progress() const { return seen; }

private:
    void look(const FormatModel& model, const Input& file);
    bool lookIn(MessageReader& reader, const RowText& rows, std::size_t from, std::size_t until);
    bool isChosen(std::size_t place) const;

    const MessageIndex& index;
    std::shared_ptr<const Selection> selection;
    Options options;
    std::size_t count;    // messages when the search began
    std::atomic<std::size_t> seen = 0;
    std::atomic<std::size_t> result;
    Pass pass;
};
