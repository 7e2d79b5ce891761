#include "base/Descriptor.h"
#include "base/Interrupt.h"
#include "base/LastWords.h"
#include "base/Terminal.h"
#include "commands/Arguments.h"
#include "commands/Commands.h"
#include "commands/HelpFormatter.h"
#include "commands/Mistakes.h"
#include "commands/OutputFile.h"
#include "sources/InputUrl.h"
#include "sources/Passwords.h"

#include <QLocale>

#include <algorithm>
#include <sstream>

namespace {

constexpr const char* programHelp =
    "'rtcm2 COMMAND --help' tells more about a command. Without a file, or where it is -,\n"
    "standard input is read.\n\n"
    "To begin with:\n"
    "  rtcm2 stats capture.rtcm2        what is in a file\n"
    "  rtcm2 show -n 1 capture.rtcm2    its first message in full\n"
    "  rtcm2 describe                   the types of messages\n\n"
    "Inputs, beside files:\n"
    "  tcp://HOST:PORT                   what a server sends\n"
    "  ntrip://[USER@]HOST/MOUNTPOINT    a stream of a caster; 'rtcm2 list ntrip://HOST' lists "
    "them\n"
    "  udp://:PORT, udp://GROUP:PORT     datagrams; ?from=ADDRESS, ?interface=NAME\n"
    "  'serial:/dev/ttyS0?baud=4800'     a serial line; also bits=8&parity=none&stop=1\n"
    "  A connection that breaks, or is silent for 60 s (?timeout=60), is made anew after pauses of "
    "1 "
    "s\n"
    "  (?pause=1) to 60 s; with ?retries=0 it is not, and its end is the end of the input. A "
    "password is\n"
    "  best put into RTCM2_NTRIP_PASSWORD or ~/.netrc, the user also into RTCM2_NTRIP_USER; one in "
    "the\n"
    "  address, USER:PASSWORD@, is in the history of the shell.\n\n"
    "Conditions (--where):\n"
    "  FIELD == VALUE    also != < <= > >=, and ~ for a piece of a text\n"
    "  present(FIELD)    and, or, not, parentheses\n"
    "  FIELD[CONDITION]  one sub-message in the field meets the whole condition\n"
    "  A field or quantity is named as 'rtcm2 describe' shows it, in quotes where the name has "
    "blanks;\n"
    "  that of a sub-message stands in brackets, or after a dot: F.X < 1 is short for F[X < 1]. A "
    "value\n"
    "  is a number, a satellite such as G05 or the text that a coded value has. What is absent, "
    "and a\n"
    "  quantity that is not available, meets no comparison, not even !=.\n"
    "    'Corrections[Satellite == G05 and PRC_m < -4.5 and not UDRE == \"GT 8 m\"]'\n"
    "    '\"Station Health\" == \"Not Working\" or Modified_Z_Count_s >= 1800'\n\n"
    "Exit status, unless a command's own --help tells another one:\n"
    "    0  success\n"
    "    1  no message found, or none that --type, --except, --station, --mmsi, --where, "
    "--from\n"
    "       and --until choose\n"
    "    2  a wrong option, argument or expression\n"
    "    3  an input cannot be read\n"
    "    4  the output cannot be written\n"
    "    5  stopped at a message that is damaged or cannot be decoded (--on-error stop)\n"
    "    6  something in the input could not be encoded\n"
    "    7  there is not enough memory\n"
    "    8  a mistake in the program itself\n"
    "  130  interrupted by Ctrl-C; 143 by SIGTERM, 129 by SIGHUP\n"
    "'rtcm2 check' has others: 0 good, 1 warning, 2 critical, 3 not checked.\n\n"
    "A file that is named with --output takes its place when it is complete. It stays what it was "
    "when\n"
    "the exit status is 2 to 4 or more than 6, unless messages came from a pipe, a device or the "
    "network,\n"
    "or from a file that was followed: they are kept.";

using Commands = std::vector<std::unique_ptr<Command>>;

ExitStatus runChosen(const Commands& commands)
{
    try {
        Host host;
        for (const auto& command : commands) {
            if (command->isChosen()) {
                return command->run(host);
            }
        }
    } catch (const UsageError& error) {
        tellLines("rtcm2: " + error.text);
    } catch (const UrlError& error) {
        tellLines("rtcm2: " + error.text);
    } catch (const Interrupted&) {
        return ExitStatus::interrupted;
    }
    return ExitStatus::usage;
}

// Help, the version, or what is wrong with the arguments.
ExitStatus answer(const CLI::App& app, const CLI::ParseError& reason)
{
    if (reason.get_exit_code() != 0) {
        tellLines(mistakeOf(app, reason));
        return ExitStatus::usage;
    }
    std::ostringstream asked;
    app.exit(reason, asked);
    return print(asked.str());
}

// Signals end every command alike: as shells name what they ended.
int exitStatusOf(const Commands& commands, ExitStatus end)
{
    const auto chosen = std::find_if(commands.begin(), commands.end(),
                                     [](const auto& command) { return command->isChosen(); });
    if (end == ExitStatus::interrupted) {
        return 128 + interrupt::number();
    }
    return chosen != commands.end() ? (*chosen)->exitStatus(end) : static_cast<int>(end);
}

int run(int argc, char** argv)
{
    CLI::App app{"Decodes, filters, exports and converts RTCM 2.x differential GNSS messages.",
                 "rtcm2"};
    app.require_subcommand(1);
    app.formatter(std::make_shared<HelpFormatter>());
    app.footer(programHelp);
    app.set_version_flag("--version", "rtcm2 " RTCM2_VERSION);
    Commands commands;
    commands.push_back(listCommand());
    commands.push_back(showCommand());
    commands.push_back(describeCommand());
    commands.push_back(statsCommand());
    commands.push_back(checkCommand());
    commands.push_back(reportCommand());
    commands.push_back(positionCommand());
    commands.push_back(compareCommand());
    commands.push_back(exportCommand());
    commands.push_back(convertCommand());
    commands.push_back(encodeCommand());
    commands.push_back(serveCommand());
    commands.push_back(completionCommand());
    commands.push_back(manualCommand());
    for (const auto& command : commands) {
        command->declare(app);
    }
    for (CLI::App* command : app.get_subcommands({})) {
        command->group(command->get_group().empty() ? "" : "Commands");
    }
    try {
        std::vector<std::string> arguments =
            withCommand(app, "list", {argv + std::min(argc, 1), argv + argc});
        std::reverse(arguments.begin(), arguments.end());    // as the library takes them
        app.parse(std::move(arguments));
    } catch (const CLI::ParseError& reason) {
        return exitStatusOf(commands, answer(app, reason));
    } catch (const UsageError& error) {
        tell(error.text);
        return exitStatusOf(commands, ExitStatus::usage);
    }
    return exitStatusOf(commands, runChosen(commands));
}

}    // namespace

int main(int argc, char** argv)
{
    takePasswords(argc, argv);
    occupyStandardDescriptors();
    lastWords::install();
    interrupt::install();
    try {
        // Numbers look the same everywhere.
        QLocale::setDefault(QLocale::c());
        return run(argc, argv);
    } catch (...) {
        return static_cast<int>(lastWords::tellException());
    }
}
