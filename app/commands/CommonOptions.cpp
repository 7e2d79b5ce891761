#include "commands/CommonOptions.h"

#include <charconv>

namespace {

// Every number is refused as this one would be, also one that the library would wrap around.
std::string wrongNumber(const std::string& text)
{
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && last == end && number > 0
               ? std::string()
               : "'" + text +
                     "' is no number of messages: it has to be 1 or more; without the option, "
                     "all are read";
}

}    // namespace

void declareInputs(CLI::App& command, std::vector<std::string>& inputs)
{
    command
        .add_option(
            "input", inputs,
            "Files, devices or addresses such as tcp://host:port to read, one after another; "
            "without any, and for -, standard input")
        ->type_name("FILE");
}

void declareOutput(CLI::App& command, std::string& name)
{
    command.add_option("-o,--output", name, "Write to this file instead of standard output")
        ->type_name("FILE")
        ->group(optionGroup::output);
}

void declareMax(CLI::App& command, std::uint64_t& max)
{
    command.add_option("-n,--max", max, "Stop after this many messages")
        ->check(CLI::Validator(wrongNumber, ""))
        ->type_name("N")
        ->group(optionGroup::choice);
}

void declareTimes(CLI::App& command, bool& withTimes)
{
    command
        .add_flag("--times", withTimes,
                  "Also when messages were received, UTC: of live inputs, and of recordings that "
                  "tell it")
        ->group(optionGroup::output);
}

void declareTrouble(CLI::App& command, SessionOptions& options, const std::string& about)
{
    command.add_option("--on-error", options.onError, about)
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, OnError>{
                {"report", OnError::report}, {"skip", OnError::skip}, {"stop", OnError::stop}},
            CLI::ignore_case))
        ->option_text("report|skip|stop")
        ->group(optionGroup::trouble);
    command
        .add_flag("-q,--quiet", options.quiet,
                  "Nothing on standard error but what ends the program")
        ->group(optionGroup::trouble);
}

std::vector<std::string> namesOfForms(bool forReading)
{
    std::vector<std::string> names;
    for (int form = forReading ? 0 : 1; form < inputFormCount; ++form) {
        names.emplace_back(nameOf(static_cast<InputForm>(form)));
    }
    return names;
}

std::string aboutForms(bool forReading)
{
    std::string text;
    for (const std::string& name : namesOfForms(forReading)) {
        text += (text.empty() ? "" : ", ") + name + " (" + aboutForm(*inputFormOf(name)) + ")";
    }
    return text;
}
