#include "session/Found.h"

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
