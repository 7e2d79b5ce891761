// The program itself on a stream of 100 MB, against what it cannot do without: framing alone for
// `stats`, and for `export` the JSON library's own writer putting out the same text.
#include "Workload.h"
#include "framing/Framer.h"

#include <benchmark/benchmark.h>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

namespace bench {

namespace {

constexpr std::size_t streamSize = 100'000'000;
constexpr std::size_t blockSize = std::size_t{64} << 10;

const std::string program = RTCM2_BENCH_PROGRAM;

// Quoted for the shell.
std::string quotedPath(const std::filesystem::path& path)
{
    return "'" + path.string() + "'";
}

// A file of its own, gone at the end.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& name)
        : path_(std::filesystem::temp_directory_path() /
                ("rtcm2-bench-" + std::to_string(std::random_device()()) + "-" + name))
    {
    }
    ~TemporaryFile() { std::filesystem::remove(path_); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

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

// The objects that the program puts out for the sample, parsed.
std::vector<rapidjson::Document> exportedObjects(std::string& text)
{
    const TemporaryFile exported("export");
    const std::string command = quotedPath(program) + " export " + quotedPath(RTCM2_BENCH_SAMPLE) +
                                " > " + quotedPath(exported.path());
    std::vector<rapidjson::Document> objects;
    if (std::system(command.c_str()) == 0) {
        std::ifstream lines(exported.path());
        for (std::string line; std::getline(lines, line);) {
            objects.emplace_back().Parse(line.c_str());
            text += line + '\n';
        }
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
    std::string exported;
    const auto objects = exportedObjects(exported);
    rapidjson::StringBuffer text;
    writeObjects(objects, text);
    if (exported.empty() || exported != text.GetString()) {
        state.SkipWithError("writes another text than the program");
        return;
    }
    const std::size_t rounds = capture().rounds();
    for (auto _ : state) {
        const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen("/dev/null", "wb"),
                                                                   std::fclose);
        for (std::size_t round = 0; round < rounds; ++round) {
            text.Clear();
            writeObjects(objects, text);
            std::fwrite(text.GetString(), 1, text.GetSize(), file.get());
        }
    }
    count(state);
    state.counters["text_bytes"] = static_cast<double>(exported.size() * rounds);
}

const bool registered = [] {
    const auto add = [](const char* name, auto run) {
        benchmark::RegisterBenchmark(name, run)->UseRealTime()->Unit(benchmark::kMillisecond);
    };
    add("stats/100 MB stream/rtcm2", [](auto& state) { runProgram(state, "stats"); });
    add("stats/100 MB stream/framing", framingAlone);
    add("export/100 MB stream/rtcm2", [](auto& state) { runProgram(state, "export"); });
    add("export/100 MB stream/json_writer", jsonWriterAlone);
    return true;
}();

}    // namespace

}    // namespace bench
