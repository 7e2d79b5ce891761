#include "sources/NtripReply.h"

#include "base/PlainText.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace {

constexpr std::size_t longestName = 64;    // of a field

constexpr std::array<std::string_view, 4> firstWords = {"HTTP/1.", "ICY ", "SOURCETABLE ", "ERROR"};

// Takes a line with its end off the text; nothing when the end is not there.
std::optional<std::string_view> takeLine(std::string_view& text)
{
    const std::size_t end = text.find('\n');
    if (end == std::string_view::npos) {
        return std::nullopt;
    }
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return line;
}

bool isNameSign(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-';
}

void readField(NtripReply& reply, std::string_view line, bool& isTable, bool& isPage)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) {
        return;
    }
    const std::string name = inSmallLetters(withoutBlanks(line.substr(0, colon)));
    const std::string_view value = withoutBlanks(line.substr(colon + 1));
    const std::string small = inSmallLetters(value);
    if (name == "content-type") {
        isTable = small.find("gnss/sourcetable") != std::string::npos;
        isPage = small.find("text/html") != std::string::npos;
    } else if (name == "transfer-encoding") {
        reply.isChunked = small == "chunked";
        reply.isKnown = reply.isChunked || small == "identity";
    } else if (name == "content-length") {
        reply.contentLength = numberIn<std::uint64_t>(value);
    } else if (name == "location") {
        reply.location = value;
    }
}

NtripReply::Kind kindOf(const NtripReply& reply, bool isTable, bool isPage)
{
    using Kind = NtripReply::Kind;
    if (reply.status == 200 && reply.isKnown) {
        return isTable ? Kind::sourceTable : isPage ? Kind::page : Kind::stream;
    }
    return reply.status / 100 == 3 && !reply.location.empty() ? Kind::redirect : Kind::refused;
}

// Lines up to an empty one.
std::optional<NtripReply> readFields(NtripReply reply, std::string_view rest, std::size_t whole)
{
    bool isTable = reply.kind == NtripReply::Kind::sourceTable;
    bool isPage = false;
    std::size_t read = whole - rest.size();
    while (const auto line = takeLine(rest)) {
        // Some casters leave out the empty line before their table.
        const bool isBody = isTable && line->find(';') < line->find(':');
        if (line->empty() || isBody) {
            reply.kind = kindOf(reply, isTable, isPage);
            reply.headBytes = isBody ? read : whole - rest.size();
            return reply;
        }
        read = whole - rest.size();
        readField(reply, *line, isTable, isPage);
    }
    return std::nullopt;
}

}    // namespace

std::optional<NtripReply> ntripReply(std::string_view bytes, bool areAll)
{
    std::string_view rest = bytes;
    const auto line = takeLine(rest);
    if (!line && !areAll) {
        return std::nullopt;
    }
    NtripReply reply;
    const std::string_view first = line ? *line : withoutBlanks(bytes);
    const std::string_view word = first.substr(0, first.find(' '));
    reply.statusText =
        word == "ERROR" ? first : first.substr(std::min(first.size(), word.size() + 1));
    reply.status = numberIn<unsigned>(reply.statusText.substr(0, 3)).value_or(0);
    reply.headBytes = line ? bytes.size() - rest.size() : bytes.size();
    if (word == "ICY" && reply.status == 200) {
        reply.kind = NtripReply::Kind::stream;
        reply.isBare = true;
        return reply;
    }
    if (word == "ICY" || word == "ERROR" || !line) {
        return reply;
    }
    if (word == "SOURCETABLE") {
        reply.kind = NtripReply::Kind::sourceTable;
    }
    const auto whole = readFields(reply, rest, bytes.size());
    return whole || !areAll ? whole : std::optional(reply);
}

std::optional<std::size_t> bytesBeforeData(std::string_view text)
{
    const std::size_t whole = text.size();
    while (true) {
        const auto length = static_cast<std::size_t>(
            std::find_if_not(text.begin(), text.end(), isNameSign) - text.begin());
        if (length == text.size()) {
            return length > longestName ? std::optional(whole - length) : std::nullopt;
        }
        const char sign = text[length];
        const bool isField = length > 0 && length <= longestName && sign == ':';
        const bool isEmptyLine = length == 0 && (sign == '\r' || sign == '\n');
        if (!isField && !isEmptyLine) {
            return whole - text.size();
        }
        if (isEmptyLine && text.substr(0, 2) != "\r\n" && (sign == '\n' || text.size() > 1)) {
            return whole - text.size() + (sign == '\n' ? 1U : 0U);
        }
        if (!takeLine(text)) {
            return std::nullopt;
        }
        if (isEmptyLine) {
            return whole - text.size();
        }
    }
}

bool mayBeNtripReply(std::string_view bytes)
{
    return std::any_of(firstWords.begin(), firstWords.end(), [bytes](std::string_view word) {
        const std::size_t length = std::min(word.size(), bytes.size());
        return word.substr(0, length) == bytes.substr(0, length);
    });
}
