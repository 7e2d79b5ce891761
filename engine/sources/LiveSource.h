// The bytes of a link that is made anew when it breaks.
#pragma once

#include "sources/Link.h"
#include "sources/Source.h"

#include <limits>
#include <memory>

struct RetryRule {
    double firstPause = 1;    // seconds; each further one is twice as long, up to a minute
    // Attempts in a row, after which the input ends. With none, the end of the link is its end.
    double most = std::numeric_limits<double>::infinity();
};

class LiveSource : public Source {
public:
    LiveSource(const std::string& shownName, std::unique_ptr<Link> way, const RetryRule& rule);

    // The first time, the link has to open at once.
    std::span<const std::uint8_t> read() override;

private:
    bool openFirst();
    bool openAgain();
    bool waitForNext(const std::string& what);
    void fail();

    std::unique_ptr<Link> link;
    RetryRule retry;
    bool wasOpen = false;
    bool isOver = false;
    double pause;                   // before the next attempt
    double attempts = 0;            // since bytes came
    std::uint64_t linkBytes = 0;    // since the link was opened
};
