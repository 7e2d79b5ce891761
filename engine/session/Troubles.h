// What gave no message that could be shown, in words for people: where it is, of which station and
// type, and what is wrong.
#pragma once

#include "session/Found.h"

#include <functional>
#include <map>
#include <string>
#include <utility>

class Troubles {
public:
    using Tell = std::function<void(const std::string& line)>;

    Troubles(const FormatModel& model, Tell teller) : formatModel(model), tell(std::move(teller)) {}

    void beginInput(const std::string& name) { input = name; }
    // The first ten of a sort are told one by one.
    void add(const Found& found);
    // Tells how many more of each sort there were.
    void endInput();

    // What is wrong, where something is.
    static std::string reasonOf(const FormatModel& model, const Found& found);

private:
    // What is alike: the same trouble with messages of the same type, or of none that is known.
    using Sort = std::pair<Found::What, int>;

    std::string lineOf(const Found& found) const;

    const FormatModel& formatModel;
    Tell tell;
    std::string input;
    std::map<Sort, std::uint64_t> counts;
};
