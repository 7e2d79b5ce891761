// Runs messages through a session into a sink and gives what the sink wrote.
#pragma once

#include "base/Output.h"
#include "commands/Host.h"
#include "filter/MessageFilter.h"
#include "forms/InputForm.h"
#include "framing/StreamWriter.h"
#include "session/Session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

class AppSession {
public:
    using Packed = std::vector<std::uint8_t>;
    using MakeSink = std::function<std::unique_ptr<Sink>(Output&)>;

    AppSession()
    {
        std::string pattern = testing::TempDir() + "/app_XXXXXX";
        directory = ::mkdtemp(pattern.data());
    }
    ~AppSession() { std::filesystem::remove_all(directory); }
    AppSession(const AppSession&) = delete;
    AppSession& operator=(const AppSession&) = delete;

    std::string pathOf(const std::string& name) const { return directory + "/" + name; }

    void writeFile(const std::string& name, const Packed& bytes) const
    {
        std::ofstream(pathOf(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
    }

    std::string readFile(const std::string& name) const
    {
        std::ifstream file(pathOf(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static Packed streamOf(const std::vector<Packed>& messages)
    {
        framing::StreamWriter writer;
        Packed stream;
        for (const Packed& message : messages) {
            EXPECT_TRUE(writer.append(message, stream));
        }
        return stream;
    }

    ExitStatus read(const std::vector<std::string>& paths, Sink& sink)
    {
        const MessageFilter filter(host.model, filterOptions);
        Session session(host.model, host.driver, filter, {.form = form});
        return session.run(paths, sessionOptions, sink);
    }

    // Reads files by their names in the directory; the result is what the sink wrote.
    std::string run(const std::vector<std::string>& names, const MakeSink& makeSink)
    {
        std::vector<std::string> paths;
        for (const std::string& name : names) {
            paths.push_back(pathOf(name));
        }
        Output output;
        EXPECT_TRUE(output.open(pathOf("output")));
        read(paths, *makeSink(output));
        EXPECT_TRUE(output.close()) << output.problem();
        return readFile("output");
    }

    std::string run(const std::vector<Packed>& messages, const MakeSink& makeSink)
    {
        writeFile("input", streamOf(messages));
        return run(std::vector<std::string>{"input"}, makeSink);
    }

    std::vector<const KindModel*> kinds(const std::vector<std::string>& names) const
    {
        return MessageFilter(host.model, {.kinds = names, .stations = {}, .where = {}}).kinds();
    }

    Host host;
    InputForm form = InputForm::stream;
    FilterOptions filterOptions;
    SessionOptions sessionOptions{.max = 0, .onError = OnError::report, .quiet = true};

private:
    std::string directory;
};
