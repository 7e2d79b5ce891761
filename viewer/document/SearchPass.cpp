#include "viewer/document/SearchPass.h"

#include "viewer/document/MessageReader.h"
#include "viewer/document/RowText.h"

#include <algorithm>
#include <string_view>

namespace {

constexpr std::size_t atOnce = 4096;    // messages
constexpr std::size_t nowhere = SIZE_MAX;

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool contains(std::string_view text, std::string_view lowered)
{
    return std::search(text.begin(), text.end(), lowered.begin(), lowered.end(),
                       [](char a, char b) { return lower(a) == b; }) != text.end();
}

}    // namespace

SearchPass::SearchPass(const FormatModel& model, const Input& file, const MessageIndex& read,
                       std::shared_ptr<const Selection> chosen, const Options& searched)
    : index(read), selection(std::move(chosen)), options(searched), count(read.size()),
      result(nowhere)
{
    std::transform(options.text.begin(), options.text.end(), options.text.begin(), lower);
    pass.begin([this, &model, file] { look(model, file); });
}

std::optional<std::size_t> SearchPass::found() const
{
    return result == nowhere ? std::nullopt : std::optional<std::size_t>(result);
}

// In pieces that follow each other in the direction of the search, from the start round to it.
void SearchPass::look(const FormatModel& model, const Input& file)
{
    MessageReader reader(model, file, index);
    const RowText rows(model);
    const std::size_t start = std::min(options.start, count);
    const std::size_t behind = std::min(start + 1, count);
    for (std::size_t done = 0; done < count && !pass.isAskedToEnd();) {
        std::size_t from = 0;
        std::size_t until = 0;
        if (options.backwards) {
            until = done < start ? start - done : count - (done - start);
            from = std::max(done < start ? 0 : start, until - std::min(until, atOnce));
        } else {
            const std::size_t ahead = count - behind;
            from = done < ahead ? behind + done : done - ahead;
            until = std::min(from + atOnce, done < ahead ? count : behind);
        }
        if (lookIn(reader, rows, from, until)) {
            return;
        }
        done += until - from;
        seen = done;
    }
}

bool SearchPass::lookIn(MessageReader& reader, const RowText& rows, std::size_t from,
                        std::size_t until)
{
    std::size_t best = nowhere;
    Text text;
    const auto take = [&](std::size_t place, const Found& found) {
        const bool isBetter = best == nowhere || (options.backwards ? place > best : place < best);
        if (isBetter && isChosen(place)) {
            text.clear();
            rows.append(text, found);
            if (found.hasRecord()) {
                text.append(' ');
                text.append(found.kind->text.empty() ? found.kind->name : found.kind->text);
            }
            best = contains(text.view(), options.text) ? place : best;
        }
    };
    reader.read(from, until, take, [this] { return pass.isAskedToEnd(); });
    result = best;
    return best != nowhere;
}

bool SearchPass::isChosen(std::size_t place) const
{
    if (selection == nullptr) {
        return true;
    }
    const std::size_t before = countBefore(*selection, selection->size(), place);
    return before < selection->size() && (*selection)[before] == place;
}
