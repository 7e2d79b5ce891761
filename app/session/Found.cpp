#include "session/Found.h"

#include <algorithm>

void Found::setPacked(std::span<const std::uint8_t> bytes)
{
    size = std::min(bytes.size(), storage.size());
    std::copy_n(bytes.begin(), size, storage.begin());
}

const char* nameOf(Found::What what)
{
    switch (what) {
    case Found::What::message:
    case Found::What::unreported:
        break;
    case Found::What::damaged:
        return "damaged message";
    case Found::What::truncated:
        return "truncated message";
    case Found::What::unknownType:
        return "unknown type";
    case Found::What::misfit:
        return "content does not fit";
    }
    return "message";
}
