#include "sources/NtripLink.h"

#include "base/NearestName.h"
#include "base/PlainText.h"
#include "sources/TcpLink.h"

#include <algorithm>

namespace {

constexpr std::size_t longestTable = 16 << 20;
constexpr double longestTableSilence = 15;
constexpr double longestTableTime = 60;

bool contains(const std::string& text, const char* word)
{
    return inSmallLetters(text).find(word) != std::string::npos;
}

// A server may say much.
std::string answerText(const NtripReply& reply)
{
    return "the caster answers '" + reply.statusText.substr(0, 100) + "'";
}

// Version 1 says in words what is wrong.
bool isAboutLogin(const NtripReply& reply)
{
    return reply.status == 401 || reply.status == 403 || contains(reply.statusText, "password");
}

bool isAboutMountpoint(const NtripReply& reply)
{
    return reply.status == 404 || reply.kind == NtripReply::Kind::sourceTable ||
           contains(reply.statusText, "mount");
}

std::string loginProblem(const NtripReply& reply, const InputUrl& url,
                         const Credentials& credentials)
{
    const std::string answer = answerText(reply) + ": ";
    if (!credentials.isEmpty()) {
        return answer + "it does not take user '" + credentials.user + "' with this password";
    }
    return answer + "it wants a user and a password: name the user in the address, ntrip://USER@" +
           url.authority() + "/" + url.path +
           ", and put the password into RTCM2_NTRIP_PASSWORD or ~/.netrc";
}

// The last line of a table that is whole.
bool hasEndLine(const std::string& table)
{
    const std::size_t tail = std::min<std::size_t>(table.size(), 64);
    return table.find("ENDSOURCETABLE", table.size() - tail) != std::string::npos;
}

CasterAnswer readTable(NtripExchange& exchange, const Wait& wait)
{
    const Wait::Clock::time_point deadline = deadlineIn(longestTableTime);
    std::string table;
    while (table.size() < longestTable && Wait::Clock::now() < deadline && !hasEndLine(table)) {
        const auto bytes = exchange.receive(longestTableSilence, wait);
        if (bytes.empty()) {
            break;
        }
        table.append(bytes.begin(), bytes.end());
    }
    CasterAnswer answer{casterStreams(table), ""};
    if (exchange.reply().kind != NtripReply::Kind::sourceTable && answer.streams.empty()) {
        answer.problem = "what comes is no source table";
    } else if (!hasEndLine(table) && !exchange.isAtEnd()) {
        answer.problem = "the source table is cut: " + exchange.problem();
    }
    return answer;
}

}    // namespace

bool NtripLink::open(const Wait& wait, const Tell& tell)
{
    if (isFirst && !credentials.warning.empty()) {
        tell(credentials.warning);
    }
    const bool isAnswered = exchange.ask(url.path, wait);
    const bool isStream = isAnswered && exchange.reply().kind == NtripReply::Kind::stream;
    problemText = isStream ? "" : isAnswered ? refusal(wait) : exchange.problem();
    isFirst = false;
    return isStream;
}

std::string NtripLink::refusal(const Wait& wait) const
{
    const NtripReply& reply = exchange.reply();
    if (reply.kind == NtripReply::Kind::page) {
        return "a web page comes instead of a stream; most casters have port 2101";
    }
    if (isAboutLogin(reply)) {
        return loginProblem(reply, url, credentials);
    }
    if (!isAboutMountpoint(reply)) {
        return answerText(reply) + (reply.isKnown ? "" : " in a transfer coding that is not known");
    }
    return noMountpoint(wait);
}

std::string NtripLink::noMountpoint(const Wait& wait) const
{
    std::string what = "the caster has no stream at mountpoint '" + url.path + "' now";
    if (!isFirst) {
        return what;    // it was there before
    }
    std::vector<std::string> names;
    for (const CasterStream& stream : askCaster(url, credentials, wait).streams) {
        names.push_back(stream.mountpoint);
    }
    const std::string meant = suggestion(nearestNames(url.path, names));
    return what + "; " + (meant.empty() ? "" : meant + " ") + "'rtcm2 list ntrip://" +
           url.authority() + "' shows those that it has";
}

std::span<const std::uint8_t> NtripLink::receive(const Wait& wait, const Tell& /*tell*/)
{
    const std::span<const std::uint8_t> bytes = exchange.receive(longestSilence(url), wait);
    problemText = exchange.problem();
    atEnd = exchange.isAtEnd();
    return bytes;
}

CasterAnswer askCaster(const InputUrl& url, const Credentials& credentials, const Wait& wait)
{
    NtripExchange exchange(url, credentials);
    if (!exchange.ask("", wait)) {
        return {{}, exchange.problem()};
    }
    const NtripReply& reply = exchange.reply();
    if (reply.kind == NtripReply::Kind::page) {
        return {{}, "a web page comes instead of a source table; most casters have port 2101"};
    }
    if (reply.kind == NtripReply::Kind::refused) {
        return {{},
                isAboutLogin(reply) ? loginProblem(reply, url, credentials) : answerText(reply)};
    }
    return readTable(exchange, wait);
}
