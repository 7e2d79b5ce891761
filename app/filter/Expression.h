// A condition on the fields of a message, as people write it.
#pragma once

#include "FormatModel.h"

#include <memory>
#include <string_view>
#include <vector>

class Message;

class Expression {
public:
    // `kinds` are those that the expression will be asked about. Throws FilterError.
    Expression(std::string_view text, const std::vector<const KindModel*>& kinds);
    ~Expression();

    bool holds(const Message& message, const KindModel& kind) const;
};
