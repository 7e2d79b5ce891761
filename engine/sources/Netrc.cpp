#include "sources/Netrc.h"

#include <fstream>
#include <string_view>
#include <vector>

namespace {

// The words of a line; one in quotes may hold blanks, and \ takes the next sign as it is there.
std::vector<std::string> wordsOf(const std::string& line)
{
    std::vector<std::string> words;
    std::size_t i = 0;
    while ((i = line.find_first_not_of(" \t\r", i)) != std::string::npos) {
        if (line[i] == '#' && words.empty()) {
            break;
        }
        std::string& word = words.emplace_back();
        const bool isQuoted = line[i] == '"';
        const std::string_view ends = isQuoted ? "\"" : " \t\r";
        for (i += isQuoted ? 1 : 0; i < line.size() && ends.find(line[i]) == std::string_view::npos;
             ++i) {
            i += isQuoted && line[i] == '\\' && i + 1 < line.size() ? 1 : 0;
            word += line[i];
        }
        i += isQuoted && i < line.size() ? 1 : 0;
    }
    return words;
}

// All words of the file, without macros, which end at an empty line.
std::vector<std::string> wordsIn(const std::string& fileName)
{
    std::ifstream file(fileName);
    std::vector<std::string> all;
    bool isMacro = false;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> words = wordsOf(line);
        isMacro = !words.empty() && (isMacro || words.front() == "macdef");
        if (!isMacro) {
            all.insert(all.end(), words.begin(), words.end());
        }
    }
    return all;
}

}    // namespace

std::optional<NetrcEntry> netrcEntry(const std::string& fileName, const std::string& host,
                                     const std::string& login)
{
    std::vector<std::string> words = wordsIn(fileName);
    words.insert(words.end(), {"default", ""});    // so that each entry has one behind it
    NetrcEntry entry;
    bool isForHost = false;
    bool hasPassword = false;
    for (std::size_t i = 0; i + 1 < words.size(); ++i) {
        const std::string& word = words[i];
        if (word == "machine" || word == "default") {
            if (isForHost && hasPassword && (login.empty() || entry.login == login)) {
                return entry;
            }
            entry = {login, ""};
            hasPassword = false;
            i += word == "machine" ? 1 : 0;
            isForHost = word == "default" || words[i] == host;
        } else if (word == "login") {
            entry.login = words[++i];
        } else if (word == "password") {
            entry.password = words[++i];
            hasPassword = true;
        } else if (word == "account") {
            ++i;
        }
    }
    return std::nullopt;
}
