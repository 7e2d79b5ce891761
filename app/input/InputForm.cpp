#include "InputForm.h"

#include "StreamReader.h"

std::optional<InputForm> inputFormOf(std::string_view name)
{
    if (name == "auto" || name == "stream") {
        return InputForm::stream;
    }
    return std::nullopt;
}

std::unique_ptr<PacketReader> makeReader(InputForm)
{
    return std::make_unique<StreamReader>();
}
