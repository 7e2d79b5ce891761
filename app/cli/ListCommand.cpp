#include "ListCommand.h"

void ListCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("list", "One line a message");
    reading.declare(*app);
    app->add_flag("-i,--interpreted", list.interpreted, "Show what coded values mean");
    app->add_option("--fields", list.fields, "Only these fields, by name")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("FIELD");
    app->add_option("-s,--separator", list.separator, "Text between two fields")
        ->capture_default_str();
    app->add_flag("-p,--position", list.position, "Show message number and byte position first");
}

ExitStatus ListCommand::run(Host& host)
{
    return runSession(host, reading, [this](Output& output, const MessageFilter& filter) {
        return std::make_unique<ListView>(output, list, filter.kinds());
    });
}
