#include "sources/NtripExchange.h"

#include <QByteArray>

#include <algorithm>

namespace {

constexpr std::size_t longestHead = 16384;
constexpr double longestWait = 15;    // seconds for the head
constexpr int mostRedirects = 3;

std::string base64(const std::string& text)
{
    return QByteArray::fromStdString(text).toBase64().toStdString();
}

// Where a redirect leads, as the address of an input.
std::string addressOf(const std::string& location, const InputUrl& from)
{
    const std::string http = "http://";
    if (location.compare(0, 1, "/") == 0) {
        return "ntrip://" + from.authority() + location;
    }
    if (location.compare(0, http.size(), http) != 0) {
        return location;
    }
    std::string address = location.substr(http.size());
    const std::size_t end = std::min(address.find('/'), address.size());
    if (address.find(':') > end) {
        address.insert(end, ":80");
    }
    return "ntrip://" + address;
}

}    // namespace

bool NtripExchange::fail(const std::string& reason)
{
    problemText = reason;
    return false;
}

bool NtripExchange::ask(const std::string& mountpoint, const Wait& wait)
{
    target = home;
    target.path = mountpoint;
    for (int i = 0; i <= mostRedirects; ++i) {
        bool isAnswered = askOnce(wait);
        if (isForVersion1(isAnswered)) {
            knowsVersion2 = false;
            isAnswered = askOnce(wait);
        }
        if (!isAnswered || head.kind != NtripReply::Kind::redirect) {
            return isAnswered;
        }
        if (!redirect()) {
            return fail("it redirects to an address that is none of a caster");
        }
    }
    return fail("it redirects again and again");
}

// Some casters of version 1 close the connection at a request that they do not know.
bool NtripExchange::isForVersion1(bool isAnswered) const
{
    return knowsVersion2 &&
           (isAnswered ? head.status == 400 || head.status == 501 || head.status == 505
                       : stream.isClosedByPeer() && received.empty());
}

bool NtripExchange::redirect()
{
    try {
        const InputUrl next = inputUrl(addressOf(head.location, target));
        target.host = next.host;
        target.port = next.port;
        target.path = next.path;
        return next.scheme == "ntrip";
    } catch (const UrlError&) {
        return false;
    }
}

bool NtripExchange::askOnce(const Wait& wait)
{
    received.clear();
    problemText.clear();
    if (!stream.connect(target.host, target.port, wait) || !stream.send(request(), wait)) {
        return fail(stream.problem());
    }
    return readHead(wait);
}

std::string NtripExchange::request() const
{
    std::string text = "GET /" + target.path + (knowsVersion2 ? " HTTP/1.1\r\n" : " HTTP/1.0\r\n");
    if (knowsVersion2) {
        text += "Host: " + target.authority() + "\r\nNtrip-Version: Ntrip/2.0\r\n";
    }
    text += "User-Agent: NTRIP rtcm2/" RTCM2_VERSION "\r\n";
    const bool isHome = target.host == home.host && target.port == home.port;
    if (isHome && !credentials.isEmpty()) {
        text += "Authorization: Basic " + base64(credentials.user + ":" + credentials.password) +
                "\r\n";
    }
    return text + (knowsVersion2 ? "Connection: close\r\n\r\n" : "\r\n");
}

bool NtripExchange::readHead(const Wait& wait)
{
    const Wait::Clock::time_point deadline = deadlineIn(longestWait);
    while (Wait::Clock::now() < deadline) {
        const std::span<const std::uint8_t> bytes = stream.receive(longestWait, wait);
        if (bytes.empty()) {
            const bool isClosed = stream.isClosedByPeer();
            return (isClosed && takeHead(true)) ||
                   fail(isClosed ? "it closes the connection without an answer" : stream.problem());
        }
        received.append(bytes.begin(), bytes.end());
        if (!mayBeNtripReply(received)) {
            return fail("what answers is no caster; tcp:// reads what it sends as it is");
        }
        if (takeHead(false)) {
            return true;
        }
        if (received.size() > longestHead) {
            return fail("its answer has no end");
        }
    }
    return fail("it does not answer as a caster does within " +
                std::to_string(static_cast<int>(longestWait)) + " s");
}

bool NtripExchange::takeHead(bool areAll)
{
    const auto reply = received.empty() ? std::nullopt : ntripReply(received, areAll);
    if (reply) {
        head = *reply;
        beginBody(std::string_view(received).substr(head.headBytes));
    }
    return reply.has_value();
}

void NtripExchange::beginBody(std::string_view behindHead)
{
    const std::vector<std::uint8_t> bytes(behindHead.begin(), behindHead.end());
    received.clear();
    chunks = {};
    left = head.contentLength.value_or(0);
    data.clear();
    isOver = false;
    atEnd = false;
    problemText.clear();
    decode(bytes);
    hasData = !data.empty();
}

std::span<const std::uint8_t> NtripExchange::receive(double longestSilence, const Wait& wait)
{
    while (!hasData && !isOver) {
        data.clear();
        const std::span<const std::uint8_t> bytes = stream.receive(longestSilence, wait);
        if (bytes.empty()) {
            // What was held back could have been a line before the data.
            data.assign(received.begin(), received.end());
            received.clear();
            const bool hasEnd = head.isChunked || head.contentLength;
            endWith(stream.problem(), stream.isAtEnd() && !hasEnd);
        } else {
            decode(bytes);
        }
        hasData = !data.empty();
    }
    if (!hasData) {
        return {};
    }
    hasData = false;
    return data;
}

void NtripExchange::endWith(const std::string& reason, bool isOrderly)
{
    isOver = true;
    atEnd = isOrderly;
    problemText = reason;
}

void NtripExchange::decode(std::span<const std::uint8_t> bytes)
{
    if (head.isBare) {
        decodeBare(bytes);
    } else if (head.isChunked) {
        decodeChunks(bytes);
    } else if (head.contentLength) {
        decodeCounted(bytes);
    } else {
        data.assign(bytes.begin(), bytes.end());
    }
}

void NtripExchange::decodeBare(std::span<const std::uint8_t> bytes)
{
    received.append(bytes.begin(), bytes.end());
    auto before = bytesBeforeData(received);
    if (!before && received.size() > longestHead) {
        before = 0;
    }
    if (before) {
        data.assign(received.begin() + static_cast<long>(*before), received.end());
        received.clear();
        head.isBare = false;    // what follows is data
    }
}

void NtripExchange::decodeChunks(std::span<const std::uint8_t> bytes)
{
    if (!chunks.push(bytes, data)) {
        endWith(chunks.isAtEnd() ? "the caster ended it" : chunks.problem(), chunks.isAtEnd());
    }
}

void NtripExchange::decodeCounted(std::span<const std::uint8_t> bytes)
{
    const std::size_t count = std::min<std::uint64_t>(left, bytes.size());
    data.assign(bytes.begin(), bytes.begin() + static_cast<long>(count));
    left -= count;
    if (left == 0) {
        endWith("the caster ended it", true);
    }
}
