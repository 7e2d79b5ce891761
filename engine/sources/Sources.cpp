#include "sources/Sources.h"

#include "sources/FileSource.h"
#include "sources/LiveSource.h"
#include "sources/NtripLink.h"
#include "sources/SerialLink.h"
#include "sources/TcpLink.h"
#include "sources/UdpLink.h"

#include <chrono>
#include <system_error>

namespace {

std::unique_ptr<Link> linkOf(const InputUrl& url, const std::string& name)
try {
    if (url.scheme == "tcp") {
        return std::make_unique<TcpLink>(url);
    }
    if (url.scheme == "udp") {
        return std::make_unique<UdpLink>(url);
    }
    if (url.scheme == "serial") {
        return std::make_unique<SerialLink>(url);
    }
    return std::make_unique<NtripLink>(url, credentialsFor(url, name));
} catch (const std::system_error& error) {    // too many open files
    throw UrlError{"cannot read " + url.shown() + ": " + error.what()};
}

}    // namespace

void Source::stampTime()
{
    receiveTime = std::chrono::duration_cast<std::chrono::microseconds>(
                      std::chrono::system_clock::now().time_since_epoch())
                      .count();
}

void Source::seek(std::uint64_t, std::uint64_t)
{
    problemText = "cannot read a part of " + displayName + ": its bytes come one after another";
}

std::unique_ptr<Source> openSource(const std::string& name, const SourceOptions& options)
{
    if (!isUrl(name)) {
        return std::make_unique<FileSource>(name, options.follows);
    }
    const InputUrl url = inputUrl(name);
    RetryRule rule;
    rule.firstPause = url.number("pause", rule.firstPause);
    rule.most = url.number("retries", rule.most);
    return std::make_unique<LiveSource>(url.shown(), linkOf(url, name), rule);
}

std::string shownInput(const std::string& name)
{
    return isUrl(name) ? inputUrl(name).shown() : name == "-" ? "standard input" : name;
}

bool isLiveInput(const std::string& name)
{
    return isUrl(name) || comesSlowly(name);
}

void checkInput(const std::string& name)
{
    if (!isUrl(name)) {
        return;
    }
    const InputUrl url = inputUrl(name);
    static_cast<void>(linkOf(url, name));    // which parameters it cannot take, it knows
    if (isCaster(name)) {
        throw UrlError{url.shown() + " names no mountpoint; 'rtcm2 list ntrip://" +
                       url.authority() + "' shows those that it has"};
    }
}

bool isEndless(const std::string& name)
{
    return isUrl(name) && !inputUrl(name).parameters.contains("retries");
}

bool isCaster(const std::string& name)
{
    if (!isUrl(name)) {
        return false;
    }
    const InputUrl url = inputUrl(name);
    return url.scheme == "ntrip" && url.path.empty();
}

CasterAnswer askCaster(const std::string& name)
{
    const InputUrl url = inputUrl(name);
    return askCaster(url, credentialsFor(url, name), Wait());
}
