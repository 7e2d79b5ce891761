#include "base/NearestName.h"

#include "base/Names.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace {

constexpr std::size_t longestComparable = 80;    // longer ones are like nothing
constexpr std::size_t mostSuggestions = 3;

std::string comparable(std::string_view name)
{
    std::string text = identifierOf(name);
    std::transform(text.begin(), text.end(), text.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return text;
}

// Number of letters to insert, remove or replace, or of neighbours to change places.
std::size_t distance(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last = beforeLast;
    std::vector<std::size_t> row = beforeLast;
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = last[j] + (a[i] == b[j] ? 0 : 1);
            row[j + 1] = std::min({replaced, last[j + 1] + 1, row[j] + 1});
            if (i > 0 && j > 0 && a[i] == b[j - 1] && a[i - 1] == b[j]) {
                row[j + 1] = std::min(row[j + 1], beforeLast[j - 1] + 1);
            }
        }
    }
    return row.back();
}

// Smaller is nearer; nothing in common gives the largest of all. All that contain the name rank
// behind those that are spelt like it.
std::size_t farness(const std::string& name, const std::string& candidate)
{
    constexpr std::size_t nothing = static_cast<std::size_t>(-1);
    const std::size_t apart = distance(name, candidate);
    if (apart < name.size() && apart <= std::max<std::size_t>(1, name.size() / 3)) {
        return apart;
    }
    const bool isPart = name.size() >= 3 && candidate.find(name) != candidate.npos;
    return isPart ? longestComparable + apart : nothing;
}

}    // namespace

std::vector<std::string> nearestNames(std::string_view name,
                                      const std::vector<std::string>& candidates)
{
    const std::string wanted = comparable(name.substr(0, longestComparable + 1));
    if (wanted.empty() || wanted.size() > longestComparable) {
        return {};
    }
    std::vector<std::pair<std::size_t, std::string>> ranked;
    for (const std::string& candidate : candidates) {
        const std::size_t far = farness(wanted, comparable(candidate));
        if (far != static_cast<std::size_t>(-1)) {
            ranked.emplace_back(far, candidate);
        }
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string> nearest;
    for (const auto& [far, candidate] : ranked) {
        const bool isAsNear = far == ranked[0].first || ranked[0].first >= longestComparable;
        if (isAsNear && nearest.size() < mostSuggestions &&
            std::find(nearest.begin(), nearest.end(), candidate) == nearest.end()) {
            nearest.push_back(candidate);
        }
    }
    return nearest;
}

std::string suggestion(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += i == 0 ? "did you mean " : i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text.empty() ? text : text + "?";
}
