// The schemes of inputs that are no files, and what can be said about such an input.
#pragma once

#include <string_view>
#include <vector>

struct UrlParameter {
    const char* name;
    const char* expected;
    // Numbers from the first to the second are taken; where both are 0, texts.
    double least = 0;
    double most = 0;
};

struct UrlScheme {
    const char* name;
    const char* form;    // for people
    bool needsHost;
    bool needsPort;
    unsigned usualPort;    // 0 where there is none
    bool hasPath;
    std::vector<UrlParameter> parameters;
};

const std::vector<UrlScheme>& urlSchemes();

// Null where there is none of this name, in small letters.
const UrlScheme* urlScheme(std::string_view name);
