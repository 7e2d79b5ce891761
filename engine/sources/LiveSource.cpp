#include "sources/LiveSource.h"

#include <QByteArray>

#include <algorithm>

namespace {

constexpr double longestPause = 60;

}    // namespace

LiveSource::LiveSource(const std::string& shownName, std::unique_ptr<Link> way,
                       const RetryRule& rule)
    : Source(shownName), link(std::move(way)), retry(rule), pause(rule.firstPause)
{
    live = true;
}

std::span<const std::uint8_t> LiveSource::read()
{
    if (isOver || (!wasOpen && !openFirst())) {
        return {};
    }
    while (!wait.isAskedToEnd()) {
        const std::span<const std::uint8_t> bytes = link->receive(wait, tell);
        if (!bytes.empty()) {
            linkBytes += bytes.size();
            attempts = 0;
            pause = retry.firstPause;
            stampTime();
            return bytes;
        }
        if (wait.isAskedToEnd() || !openAgain()) {
            break;
        }
    }
    isOver = true;
    return {};
}

bool LiveSource::openFirst()
{
    wasOpen = link->open(wait, tell);
    if (!wasOpen) {
        fail();
    }
    return wasOpen;
}

void LiveSource::fail()
{
    isOver = true;
    if (!wait.isAskedToEnd()) {
        problemText = "cannot read " + displayName + ": " + link->problem();
    }
}

bool LiveSource::openAgain()
{
    if (retry.most == 0 && link->isAtEnd()) {
        return false;
    }
    std::string what =
        "connection to " + displayName + " lost after " + std::to_string(linkBytes) + " bytes: ";
    while (waitForNext(what)) {
        if (link->open(wait, tell)) {
            tell("connected to " + displayName + " again");
            linkBytes = 0;
            return true;
        }
        what = "no connection to " + displayName + ": ";
    }
    return false;
}

// Tells what happened, and until when nothing is tried. False when nothing will be.
bool LiveSource::waitForNext(const std::string& what)
{
    if (attempts >= retry.most) {
        fail();
        return false;
    }
    if (wait.isAskedToEnd()) {
        return false;
    }
    tell(what + link->problem() + "; trying again in " +
         QByteArray::number(pause, 'g', 3).toStdString() + " s");
    ++attempts;
    const double time = pause;
    pause = std::min(2 * pause, longestPause);
    return wait.pause(time);
}
