#include "commands/serve/Caster.h"

#include "base/PlainText.h"

#include <QByteArray>
#include <QDateTime>
#include <QLocale>

#include <algorithm>

namespace {

struct CasterRequest {
    std::string method;
    std::string mountpoint;    // empty where the table of sources is asked for
    bool isHttp = false;       // not garbage
    bool isHttp11 = false;
    bool isVersion2 = false;
    std::string authorization;
    std::string agent;
};

// The text up to the separator; what stands behind that remains.
std::string_view takeUpTo(std::string_view& text, char separator)
{
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(taken.size() + 1, text.size()));
    return taken;
}

void readRequestLine(std::string_view line, CasterRequest& request)
{
    request.method = takeUpTo(line, ' ');
    std::string_view path = takeUpTo(line, ' ');
    line = withoutBlanks(line);
    request.isHttp = line.substr(0, 5) == "HTTP/" && path.substr(0, 1) == "/";
    request.isHttp11 = line == "HTTP/1.1";
    if (request.isHttp) {
        path.remove_prefix(1);
        request.mountpoint = takeUpTo(path, '?');
    }
}

CasterRequest requestOf(std::string_view head)
{
    CasterRequest request;
    readRequestLine(takeUpTo(head, '\n'), request);
    while (!head.empty()) {
        std::string_view line = takeUpTo(head, '\n');
        const std::string name = inSmallLetters(withoutBlanks(takeUpTo(line, ':')));
        const std::string_view value = withoutBlanks(line);
        if (name == "ntrip-version") {
            request.isVersion2 = inSmallLetters(value.substr(0, 7)) == "ntrip/2";
        } else if (name == "authorization") {
            request.authorization = value;
        } else if (name == "user-agent") {
            request.agent = value;
        }
    }
    return request;
}

bool mayHave(const CasterOptions& caster, const CasterRequest& request)
{
    if (caster.user.empty()) {
        return true;
    }
    std::string_view given = request.authorization;
    const std::string_view scheme = takeUpTo(given, ' ');
    const QByteArray wanted = QByteArray::fromStdString(caster.user + ":" + caster.password);
    return inSmallLetters(scheme) == "basic" &&
           withoutBlanks(given) == wanted.toBase64().toStdString();
}

// Lines of a head, each with its end.
std::string commonLines(const CasterOptions& caster)
{
    const QString date = QLocale::c().toString(QDateTime::currentDateTimeUtc(),
                                               QStringLiteral("ddd, dd MMM yyyy hh:mm:ss"));
    return "Server: " + caster.server + "\r\nDate: " + date.toStdString() + " GMT\r\n";
}

std::string http(const CasterOptions& caster, const CasterRequest& request,
                 const std::string& status, const std::string& lines)
{
    return (request.isVersion2 ? "HTTP/1.1 " + status + "\r\nNtrip-Version: Ntrip/2.0\r\n"
                               : "HTTP/1.0 " + status + "\r\n") +
           commonLines(caster) + lines + "Connection: close\r\n\r\n";
}

std::string refusal(const CasterOptions& caster, const CasterRequest& request,
                    const std::string& status, const std::string& lines = {})
{
    return http(caster, request, status, lines + "Content-Length: 0\r\n");
}

std::string tableText(const CasterOptions& caster, const CasterRequest& request)
{
    const std::string length = "Content-Length: " + std::to_string(caster.table.size()) + "\r\n";
    return (request.isVersion2
                ? http(caster, request, "200 OK", "Content-Type: gnss/sourcetable\r\n" + length)
                : "SOURCETABLE 200 OK\r\n" + commonLines(caster) + "Content-Type: text/plain\r\n" +
                      length + "Connection: close\r\n\r\n") +
           caster.table;
}

CasterReply stream(const CasterOptions& caster, const CasterRequest& request)
{
    const std::string version = request.isVersion2 ? "2" : "1";
    CasterReply answer{.text = "ICY 200 OK\r\n\r\n",
                       .isStream = true,
                       .about = "gets " + caster.mountpoint + " by NTRIP version " + version};
    if (request.isVersion2) {
        answer.isChunked = request.isHttp11;
        answer.text =
            http(caster, request, "200 OK",
                 "Content-Type: gnss/data\r\nCache-Control: no-store, no-cache\r\n" +
                     std::string(answer.isChunked ? "Transfer-Encoding: chunked\r\n" : ""));
    }
    return answer;
}

CasterReply answerTo(const CasterOptions& caster, const CasterRequest& request)
{
    if (!request.isHttp) {
        return {.text = casterRefusal(), .about = "refused: this is no request of HTTP or NTRIP"};
    }
    if (request.method != "GET") {
        return {.text = refusal(caster, request, "405 Method Not Allowed", "Allow: GET\r\n"),
                .about = "refused: the method " + request.method};
    }
    if (request.mountpoint.empty()) {
        return {.text = tableText(caster, request), .about = "gets the table of sources"};
    }
    if (request.mountpoint != caster.mountpoint) {
        return {.text = request.isVersion2 ? refusal(caster, request, "404 Not Found")
                                           : tableText(caster, request),
                .about = "asks for the unknown mountpoint " + request.mountpoint};
    }
    if (!mayHave(caster, request)) {
        return {.text = refusal(caster, request, "401 Unauthorized",
                                "WWW-Authenticate: Basic realm=\"/" + caster.mountpoint + "\"\r\n"),
                .about = "refused: " + std::string(request.authorization.empty()
                                                       ? "no user and password"
                                                       : "wrong user or password")};
    }
    return stream(caster, request);
}

}    // namespace

CasterReply casterReply(const CasterOptions& caster, std::string_view head)
{
    const CasterRequest request = requestOf(head);
    CasterReply answer = answerTo(caster, request);
    if (!request.agent.empty()) {
        answer.about += " (" + request.agent + ")";
    }
    return answer;
}

std::string casterRefusal()
{
    return "HTTP/1.0 400 Bad Request\r\nConnection: close\r\nContent-Length: 0\r\n\r\n";
}
