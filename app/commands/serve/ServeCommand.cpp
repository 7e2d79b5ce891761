#include "commands/Commands.h"

#include "base/PlainText.h"
#include "base/Terminal.h"
#include "commands/CommonOptions.h"
#include "commands/WritingOptions.h"
#include "commands/serve/FirstLook.h"
#include "commands/serve/ServeSink.h"
#include "commands/serve/Server.h"
#include "sources/Sources.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

constexpr const char* serveHelp =
    "Each client gets a stream of its own, from the beginning of a message on: what comes from "
    "then on,\nas from a receiver or caster. Files are played at the pace at which their messages "
    "were sent, by\nthe times that they carry or at which they were received; pipes and devices "
    "are passed on as\nthey come. The first client begins the play; what has ended is ended for "
    "all, unless there is\n--loop. A client that does not take what is sent is dropped; with "
    "--speed max the others wait\n10 s for it.\n\n"
    "NTRIP is spoken in versions 1 and 2; the table of sources stands at /. A password for --user "
    "is\ntaken from the environment variable RTCM2_NTRIP_PASSWORD.\n\n"
    "Examples:\n"
    "  rtcm2 serve --tcp :5017 capture.rtcm2\n"
    "  rtcm2 serve --ntrip-mount TEST --loop capture.rtcm2\n"
    "  RTCM2_NTRIP_PASSWORD=secret rtcm2 serve --ntrip-mount TEST --user me capture.rtcm2\n"
    "  rtcm2 serve --tcp 127.0.0.1:0 --speed max --type 1,9 --to hex capture.rtcm2\n"
    "  rtcm2 serve --tcp :5017 /dev/ttyUSB0    a receiver for several programs";

// How many times as fast; 0 for as fast as possible, nothing for what is no speed.
std::optional<double> speedOf(const std::string& text)
{
    constexpr double slowest = 0.001;
    if (text == "max") {
        return 0;
    }
    const std::optional<double> number = numberIn<double>(text);
    const bool isSpeed = number && std::isfinite(*number) && (*number == 0 || *number >= slowest);
    return isSpeed ? number : std::nullopt;
}

std::string wrongSpeed(const std::string& text)
{
    return speedOf(text) ? std::string()
                         : "'" + text +
                               "' is no speed: it has to be a number such as 20 or 0.5, "
                               "not less than 0.001, or max";
}

class ServeCommand : public Command {
public:
    void declare(CLI::App& program) override;
    ExitStatus run(Host& host) override;

private:
    void declareServer();
    void declarePlay();
    void checkArguments() const;
    CasterOptions caster() const;
    ExitStatus lookAt(Host& host, FirstLook& look) const;
    std::string tableLine(const FirstLook& look) const;
    ExitStatus serve(Host& host, const ClientOptions& clients, ListenAddress address);
    ExitStatus playAll(Host& host, Player& player, const ServeSink::Announce& announce);
    std::string announcement(const std::string& input, const ListenAddress& address) const;
    void tellUnlessQuiet(const std::string& line) const;

    ReadingOptions reading;
    std::string tcp;
    std::string mountpoint;
    std::string user;
    std::string speed = "1";
    WritingOptions writing;
    PlayOptions play;
    Sending sending;
    bool loops = false;
};

}    // namespace

void ServeCommand::declare(CLI::App& program)
{
    app =
        program.add_subcommand("serve", "Plays captures to receivers and programs in the network");
    writing.declareForm(*app, nameOf(InputForm::stream));
    reading.declareReading(*app);
    declareServer();
    declarePlay();
    app->footer(serveHelp);
}

void ServeCommand::declareServer()
{
    app->add_option("--tcp", tcp,
                    "Where to wait for clients: a port of every address, or of one; port 0 is any "
                    "free one, which is told. With --ntrip-mount :2101 if nothing else is said")
        ->type_name("ADDRESS")
        ->group(optionGroup::output);
    app->add_option("--ntrip-mount", mountpoint,
                    "Be an NTRIP caster that has the messages at this mountpoint")
        ->type_name("NAME")
        ->group(optionGroup::output);
    app->add_option("--user", user, "Only this user may have them, with a password")
        ->type_name("NAME")
        ->group(optionGroup::output);
    writing.declareSender(*app);
}

void ServeCommand::declarePlay()
{
    app->add_option("--speed", speed,
                    "So many times as fast as it was; max or 0 for as fast as clients take it")
        ->check(CLI::Validator(wrongSpeed, ""))
        ->type_name("FACTOR")
        ->capture_default_str();
    app->add_flag("--loop", loops, "Again and again, until Ctrl-C");
    app->add_flag("--at-once", play.beginsAtOnce, "Do not wait for a first client");
    app->add_option("--longest-pause", play.longestPause,
                    "Longer pauses in a file are shortened to a second")
        ->check(CLI::Range(1.0, 3600.0))
        ->type_name("SECONDS")
        ->capture_default_str();
}

void ServeCommand::tellUnlessQuiet(const std::string& line) const
{
    if (!reading.session.quiet) {
        tell(line);
    }
}

void ServeCommand::checkArguments() const
{
    constexpr const char* inNames =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
    if (tcp.empty() && mountpoint.empty()) {
        throw UsageError{"--tcp has to say where to wait for clients, such as --tcp :5017, or "
                         "--ntrip-mount the name of a mountpoint"};
    }
    if (mountpoint.find_first_not_of(inNames) != std::string::npos || mountpoint.size() > 100) {
        throw UsageError{"'" + mountpoint +
                         "' is no name of a mountpoint: it has to be letters, digits, and . _ -"};
    }
    if (!user.empty() && (mountpoint.empty() || user.find(':') != std::string::npos)) {
        throw UsageError{"--user goes with --ntrip-mount, and has no colon"};
    }
    for (const std::string& input : reading.inputs) {
        if (loops && (input == "-" || reading.session.follows || isLiveInput(input))) {
            throw UsageError{"--loop needs files: what comes from standard input, a pipe, a device "
                             "or the network does not come a second time"};
        }
    }
}

CasterOptions ServeCommand::caster() const
{
    CasterOptions options{
        .mountpoint = mountpoint, .user = user, .server = "NTRIP rtcm2/" RTCM2_VERSION};
    if (!user.empty()) {
        const char* const password = std::getenv("RTCM2_NTRIP_PASSWORD");
        if (password == nullptr) {
            throw UsageError{"the password of --user " + user +
                             " has to stand in the environment variable RTCM2_NTRIP_PASSWORD"};
        }
        options.password = password;
    }
    return options;
}

ExitStatus ServeCommand::run(Host& host)
{
    checkArguments();
    play.speed = speedOf(speed).value_or(1);
    const ListenAddress address = listenAddress(tcp.empty() ? ":2101" : tcp);
    sending.sender = writing.defaultsFor(reading);
    sending.needsSender = writing.needsSender();
    ClientOptions clients{.form = writing.to(),
                          .tell = [this](const std::string& line) { tellUnlessQuiet(line); }};
    if (!mountpoint.empty()) {
        clients.caster = caster();
    }
    FirstLook look(host.model);
    const ExitStatus status = lookAt(host, look);
    if (status != ExitStatus::success) {
        return status;
    }
    if (clients.caster) {
        clients.caster->table = tableLine(look) + "\r\nENDSOURCETABLE\r\n";
    }
    return serve(host, clients, address);
}

// What cannot be played is told now, and not when the first client comes.
ExitStatus ServeCommand::lookAt(Host& host, FirstLook& look) const
{
    ReadingOptions some = reading;
    some.inputs.clear();
    for (const std::string& input : reading.inputs) {
        if (input != "-" && !isLiveInput(input)) {
            some.inputs.push_back(input);
        }
    }
    some.session = {.onError = OnError::skip, .quiet = true};
    return some.inputs.empty() ? ExitStatus::success
                               : runSession(host, some, [&](Output&, const MessageFilter&) {
                                     return std::make_unique<FirstLookSink>(look);
                                 });
}

// The columns are those that NTRIP has for a stream. It is a single one, for receivers that give
// no position, neither compressed nor for a fee; where it is from is not known.
std::string ServeCommand::tableLine(const FirstLook& look) const
{
    const std::string name = writing.to() == InputForm::stream ? "RTCM 2" : "RAW " + writing.form;
    return "STR;" + mountpoint + ";" + mountpoint + ";" + name + ";" + look.types() + ";0;" +
           look.systems() + ";none;;0.00;0.00;0;0;rtcm2;none;" + (user.empty() ? "N" : "B") +
           ";N;0;none";
}

std::string ServeCommand::announcement(const std::string& input, const ListenAddress& address) const
{
    const std::size_t more = reading.inputs.size() - 1;
    return "serving " + input + (more > 0 ? " and " + std::to_string(more) + " more" : "") +
           " on " + address.text() + (mountpoint.empty() ? "" : ", mountpoint " + mountpoint) +
           "; Ctrl-C ends";
}

ExitStatus ServeCommand::serve(Host& host, const ClientOptions& clients, ListenAddress address)
{
    Server server(clients);
    const std::string problem = server.listen(address);
    if (!problem.empty()) {
        tell(problem);
        return ExitStatus::unwritable;
    }
    const ServeSink::Announce announce = [&, isTold = false](const std::string& input) mutable {
        if (!std::exchange(isTold, true)) {
            tellUnlessQuiet(announcement(input, address));
        }
    };
    Player player(host.model, server, play, clients.tell);
    const ExitStatus status = playAll(host, player, announce);
    const Served served = server.end();
    if (sending.withoutSender > 0) {
        tellUnlessQuiet(withoutSenderText(sending.withoutSender));
    }
    tellUnlessQuiet("played " + countText(served.messages, "message") + "; " +
                    countText(served.bytes, "byte") + " went to " +
                    countText(served.clients, "client"));
    return status;
}

// What is wrong with the inputs is told once.
ExitStatus ServeCommand::playAll(Host& host, Player& player, const ServeSink::Announce& announce)
{
    ReadingOptions round = reading;
    round.hasProgress = false;
    ExitStatus status = ExitStatus::success;
    do {
        status = runSession(host, round, [&](Output&, const MessageFilter&) {
            return std::make_unique<ServeSink>(player, sending, round.inputs, round.session.follows,
                                               announce);
        });
        player.beginAgain();
        round.session.quiet = true;
    } while (loops && status == ExitStatus::success);
    return status;
}

std::unique_ptr<Command> serveCommand()
{
    return std::make_unique<ServeCommand>();
}
