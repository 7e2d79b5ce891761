// JSON as `encode` reads it.
#include "fuzz.h"

#include "commands/encode/JsonInput.h"
#include "commands/encode/MessageEncoder.h"
#include "framing/Frame.h"
#include "sources/FileSource.h"

#include <algorithm>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

using namespace fuzz;

namespace {

// A file in memory.
class MemoryFile {
public:
    MemoryFile() : descriptor(::memfd_create("json", MFD_CLOEXEC)) {}

    std::string hold(std::span<const std::uint8_t> bytes)
    {
        const bool held = ::ftruncate(descriptor, 0) == 0 &&
                          ::pwrite(descriptor, bytes.data(), bytes.size(), 0) ==
                              static_cast<ssize_t>(bytes.size());
        promise(1, held, "the test cannot write its input");
        return "/proc/self/fd/" + std::to_string(descriptor);
    }

private:
    int descriptor;
};

void demandGood(std::span<const std::uint8_t> packed)
{
    promise(4, framing::isWholeMessage(packed), "encoded, but no whole message");
    demandSameBitsIfDecodable(packed);
}

}    // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MemoryFile memory;
    static MessageEncoder encoder;
    FileSource file(memory.hold({data, size}));
    JsonInput input(file);
    const auto lines = 1 + static_cast<std::uint64_t>(std::count(data, data + size, '\n'));
    std::uint64_t found = 0;
    while (input.next()) {
        promise(5, ++found <= size, "more objects than bytes");
        promise(5, input.line() >= 1 && input.line() <= lines, "an object outside the input");
        if (!input.problem().empty()) {
            continue;
        }
        if (!encoder.encode(input.object()).empty()) {
            continue;
        }
        promise(3, !encoder.packed().empty(), "refused without a reason");
        if (input.object().HasMember("fields")) {    // else it is given as it is
            demandGood(encoder.packed());
        }
    }
    promise(5, input.bytesRead() == size, "not all bytes are read");
    return 0;
}
