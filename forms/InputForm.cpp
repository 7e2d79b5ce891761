#include "forms/InputForm.h"

#include "forms/AutoReader.h"
#include "forms/HexReader.h"
#include "forms/StreamReader.h"
#include "forms/UnitReader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::array<std::pair<std::string_view, InputForm>, 5> formNames = {{
    {"auto", InputForm::automatic},
    {"stream", InputForm::stream},
    {"packed", InputForm::packed},
    {"hex", InputForm::hex},
    {"words", InputForm::words},
}};

}    // namespace

std::optional<InputForm> inputFormOf(std::string_view name)
{
    const auto found = std::find_if(formNames.begin(), formNames.end(),
                                    [&](const auto& entry) { return entry.first == name; });
    return found != formNames.end() ? std::optional(found->second) : std::nullopt;
}

std::unique_ptr<PacketReader> makeReader(InputForm form)
{
    switch (form) {
    case InputForm::stream:
        return std::make_unique<StreamReader>();
    case InputForm::packed:
        return std::make_unique<UnitReader>(packedUnits);
    case InputForm::hex:
        return std::make_unique<HexReader>();
    case InputForm::words:
        return std::make_unique<UnitReader>(recordedUnits);
    case InputForm::automatic:
        break;
    }
    return std::make_unique<AutoReader>();
}
