#include "EncodeCommand.h"

#include "EncodeSession.h"
#include "Output.h"
#include "PacketWriter.h"

#include <cstdio>

void EncodeCommand::declare(CLI::App& program)
{
    app = program.add_subcommand("encode", "Messages in the JSON of export become RTCM 2 again");
    app->add_option("input", inputs, "JSON files to read; - is standard input, as is no file")
        ->type_name("FILE");
    app->add_option("-o,--output", outputName, "Write to this file instead of standard output")
        ->type_name("FILE");
    app->add_option("--to", form,
                    "Form of the output: stream (6 bits a byte), packed, hex (a message a line), "
                    "words (a receiver's own recording)")
        ->check(CLI::IsMember({"stream", "packed", "hex", "words"}))
        ->capture_default_str();
    app->add_option("-n,--max", options.max, "Stop after this many messages")->type_name("N");
    app->add_option("--on-error", options.onError,
                    "What to do about messages that cannot be encoded: report them on standard "
                    "error, skip them silently, or stop at the first. The exit status is 6 when "
                    "there were any")
        ->transform(CLI::CheckedTransformer(
            std::map<std::string, OnError>{
                {"report", OnError::report}, {"skip", OnError::skip}, {"stop", OnError::stop}},
            CLI::ignore_case))
        ->option_text("report|skip|stop");
    app->add_flag("-q,--quiet", options.quiet,
                  "Nothing on standard error but what ends the program");
}

ExitStatus EncodeCommand::run(Host&)
{
    Output output;
    if (!outputName.empty() && !output.open(outputName)) {
        std::fprintf(stderr, "rtcm2: %s\n", output.problem().c_str());
        return ExitStatus::unwritable;
    }
    const std::unique_ptr<PacketWriter> writer = makeWriter(*inputFormOf(form));
    std::vector<std::uint8_t> bytes;
    const auto write = [&](std::span<const std::uint8_t> packed) {
        bytes.clear();
        if (!writer->append(packed, bytes)) {
            return false;
        }
        output.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        return true;
    };
    EncodeSession session(output, write, options);
    const ExitStatus status = session.run(inputs.empty() ? std::vector<std::string>{"-"} : inputs);
    if (!output.close() && !output.readerIsGone()) {
        std::fprintf(stderr, "rtcm2: %s\n", output.problem().c_str());
        return ExitStatus::unwritable;
    }
    if (status == ExitStatus::nothingFound) {
        std::fprintf(stderr, "rtcm2: no message found in the input\n");
    }
    return status;
}
