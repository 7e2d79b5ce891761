// Which source the name of an input means. Beside files there are
//
//   tcp://host:port            what a server sends
//   ntrip://host/mountpoint    a stream of a caster
//   udp://:port                datagrams that are sent to this computer
//   udp://group:port           those to a group of receivers
//   serial:/dev/ttyS0          a serial line
//
// with parameters behind a "?". A connection that breaks is made anew.
#pragma once

#include "sources/InputUrl.h"
#include "sources/Source.h"
#include "sources/SourceTable.h"

#include <memory>

struct SourceOptions {
    bool follows = false;    // a file is waited for at its end
};

// "-" is standard input. Throws UrlError.
std::unique_ptr<Source> openSource(const std::string& name, const SourceOptions& options = {});

// As it stands in tables and messages, without passwords.
std::string shownInput(const std::string& name);

// Whether the bytes of the input of this name come in their own time, from a pipe, a terminal, a
// device or the network. Then they do not come a second time.
bool isLiveInput(const std::string& name);

// Throws UrlError where the name has a scheme and is wrong, or is that of a caster as a whole.
void checkInput(const std::string& name);

// Whether the input goes on until the program is asked to end, so that none behind it is reached.
bool isEndless(const std::string& name);

// Whether the name is that of a caster as a whole, "ntrip://host", which is no stream. Throws
// UrlError.
bool isCaster(const std::string& name);
// Which streams it has.
CasterAnswer askCaster(const std::string& name);
