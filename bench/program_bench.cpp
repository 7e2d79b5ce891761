// The program itself on a stream of 100 MB, against what it cannot do without: framing alone for
// `stats`; for all that print, putting out the same text by copying it, and for JSON the JSON
// library's own writer, too. What is written in metres and seconds is measured against the same in
// raw values.
#include "TemporaryFile.h"
#include "Workload.h"
#include "framing/Framer.h"

#include <benchmark/benchmark.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>

namespace bench {

namespace {

constexpr std::size_t streamSize = 100'000'000;
constexpr std::size_t blockSize = std::size_t{64} << 10;

const std::string program = RTCM2_BENCH_PROGRAM;

// The workload: a sample's messages over and over.
struct Capture {
    Capture()
    {
        const auto stream = streamOf(messages, streamSize);
        size = stream.size();
        std::ofstream(file.path(), std::ios::binary)
            .write(reinterpret_cast<const char*>(stream.data()),
                   static_cast<std::streamsize>(stream.size()));
    }

    std::size_t rounds() const { return size / streamOf(messages, 1).size(); }

    std::vector<Message> messages = messagesOfFile(RTCM2_BENCH_SAMPLE);
    TemporaryFile file{"capture"};
    std::size_t size = 0;
};

const Capture& capture()
{
    static const Capture made;
    return made;
}

void count(benchmark::State& state)
{
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(capture().size));
}

void runProgram(benchmark::State& state, const std::string& arguments)
{
    const std::string command = quotedPath(program) + " " + arguments + " " +
                                quotedPath(capture().file.path()) + " > /dev/null";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("the program failed");
            return;
        }
    }
    count(state);
}

void framingAlone(benchmark::State& state)
{
    const std::string path = capture().file.path().string();
    std::array<std::uint8_t, blockSize> block{};
    std::uint64_t sum = 0;
    for (auto _ : state) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                                   std::fclose);
        framing::Framer framer;
        while (const std::size_t size = std::fread(block.data(), 1, block.size(), file.get())) {
            framer.push(std::span(block).first(size));
            while (const framing::Frame* frame = framer.next()) {
                sum += frame->bytes().back();
            }
        }
    }
    benchmark::DoNotOptimize(sum);
    count(state);
}

// What the program puts out for the sample; empty when it fails.
std::string textOf(const std::string& arguments)
{
    const TemporaryFile printed("text");
    const std::string command = quotedPath(program) + " " + arguments + " " +
                                quotedPath(RTCM2_BENCH_SAMPLE) + " > " + quotedPath(printed.path());
    if (std::system(command.c_str()) != 0) {
        return {};
    }
    std::ifstream file(printed.path(), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::unique_ptr<std::FILE, int (*)(std::FILE*)> nowhere()
{
    return {std::fopen("/dev/null", "wb"), std::fclose};
}

void countText(benchmark::State& state, const std::string& text)
{
    count(state);
    state.counters["text_bytes"] = static_cast<double>(text.size() * capture().rounds());
}

// The text of the sample over and over, through a block.
void copyAlone(benchmark::State& state, const std::string& arguments)
{
    const std::string text = textOf(arguments);
    if (text.empty()) {
        state.SkipWithError("the program failed");
        return;
    }
    const std::size_t rounds = capture().rounds();
    std::string block(blockSize + text.size(), ' ');
    for (auto _ : state) {
        const auto file = nowhere();
        std::size_t used = 0;
        for (std::size_t round = 0; round < rounds; ++round) {
            std::memcpy(&block[used], text.data(), text.size());
            used += text.size();
            if (used >= blockSize) {
                std::fwrite(block.data(), 1, used, file.get());
                used = 0;
            }
        }
    }
    countText(state, text);
}

// The objects of a text, parsed.
std::vector<rapidjson::Document> objectsOf(const std::string& text)
{
    std::vector<rapidjson::Document> objects;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        objects.emplace_back().Parse(line.c_str());
    }
    return objects;
}

void writeObjects(const std::vector<rapidjson::Document>& objects, rapidjson::StringBuffer& text)
{
    for (const rapidjson::Document& object : objects) {
        rapidjson::Writer<rapidjson::StringBuffer> writer(text);
        object.Accept(writer);
        text.Put('\n');
    }
}

void jsonWriterAlone(benchmark::State& state)
{
    const std::string exported = textOf("export");
    const auto objects = objectsOf(exported);
    rapidjson::StringBuffer text;
    writeObjects(objects, text);
    if (exported.empty() || exported != text.GetString()) {
        state.SkipWithError("writes another text than the program");
        return;
    }
    const std::size_t rounds = capture().rounds();
    for (auto _ : state) {
        const auto file = nowhere();
        for (std::size_t round = 0; round < rounds; ++round) {
            text.Clear();
            writeObjects(objects, text);
            std::fwrite(text.GetString(), 1, text.GetSize(), file.get());
        }
    }
    countText(state, exported);
}

const bool registered = [] {
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)->UseRealTime()->Unit(benchmark::kMillisecond);
    };
    add("stats/100 MB stream/rtcm2", [](auto& state) { runProgram(state, "stats"); });
    add("stats/100 MB stream/framing", framingAlone);
    const std::string csv = "export --format csv --type 1 --rows Corrections";
    for (const std::string& arguments : {std::string("export"), csv, std::string("list")}) {
        const std::string name = "print/rtcm2 " + arguments;
        add((name + "/rtcm2").c_str(), [=](auto& state) { runProgram(state, arguments); });
        add((name + "/copy").c_str(), [=](auto& state) { copyAlone(state, arguments); });
    }
    add("print/rtcm2 export/json_writer", jsonWriterAlone);
    for (const std::string& raw : {std::string("export"), csv}) {
        add(("scaled/rtcm2 " + raw + "/rtcm2").c_str(),
            [=](auto& state) { runProgram(state, raw + " --scaled"); });
    }
    return true;
}();

}    // namespace

}    // namespace bench
