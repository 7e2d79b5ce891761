#include "dbg.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string> readActiveNames()
{
    std::vector<std::string> names;
    const char* variable = std::getenv("DBG_SUBMODULES");
    std::string_view rest = variable ? variable : "";
    while (!rest.empty()) {
        const auto comma = rest.find(',');
        const std::string_view name = trimmed(rest.substr(0, comma));
        if (!name.empty()) {
            names.emplace_back(name);
        }
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
    }
    return names;
}

// Never destroyed: a first traced call may come from a destructor at the end of the process.
const std::vector<std::string>& activeNames()
{
    static const std::vector<std::string>& names = *new std::vector<std::string>(readActiveNames());
    return names;
}

}    // namespace

int dbg_SubModActive(const char* module, const char* subModule)
{
    const std::string moduleName = module ? module : "";
    const std::string fullName = moduleName + '/' + (subModule ? subModule : "");
    for (const std::string& name : activeNames()) {
        if (name == "*" || name == moduleName || name == fullName) {
            return 1;
        }
    }
    return 0;
}
