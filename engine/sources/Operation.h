// Operations of Asio, waited for one at a time.
#pragma once

#include "sources/Wait.h"

#include <asio/error.hpp>
#include <asio/io_context.hpp>

#include <string>

struct IoResult {
    asio::error_code error;
    std::size_t bytes = 0;
    bool isLate = false;

    // What went wrong, for people; empty when nothing did or the program is asked to end.
    std::string problem() const
    {
        return !error || error == asio::error::operation_aborted ? "" : error.message();
    }
};

// Begins an operation of a socket or line of this context with the handler that `begin` gets. It is
// cancelled after so many seconds (0 for never) and when the program is asked to end.
template <typename Io, typename Begin>
IoResult finish(asio::io_context& context, Io& io, const Wait& wait, double seconds,
                const Begin& begin)
{
    IoResult result;
    begin([&result](const asio::error_code& error, std::size_t bytes = 0) {
        result.error = error;
        result.bytes = bytes;
    });
    context.restart();
    const auto run = [&context] {
        context.run_for(Wait::slice);
        return context.stopped();
    };
    const Wait::End end = wait.until(run, deadlineIn(seconds));
    if (end != Wait::End::done) {
        asio::error_code ignored;
        io.cancel(ignored);
        context.run();    // the handler, too
    }
    result.isLate = end == Wait::End::late;
    return result;
}
