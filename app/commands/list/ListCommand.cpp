#include "commands/list/ListCommand.h"

void ListCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("list", "One line a message");
    reading.declare(*app);
    app->add_flag("-i,--interpreted", list.interpreted, "Show what coded values mean");
    app->add_option("--fields", list.fields,
                    "Only these fields, by name; those of sub-messages after a dot, as in "
                    "Corrections.PRC")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("FIELD");
    app->add_option("-s,--separator", list.separator, "Text between two fields")
        ->capture_default_str();
    app->add_flag("-p,--position", list.position, "Show message number and byte position first");
    app->footer("Examples:\n"
                "  rtcm2 list capture.rtcm2\n"
                "  rtcm2 list -i --fields 'Modified Z-Count,Station Health' capture.rtcm2\n"
                "  nc caster 2101 | rtcm2 list --type 1,31 --position -");
}

ExitStatus ListCommand::run(Host& host)
{
    return runSession(host, reading, [this](Output& output, const MessageFilter& filter) {
        checkNames(filter.kinds(), list.fields);
        return std::make_unique<ListView>(output, list, filter.kinds());
    });
}
