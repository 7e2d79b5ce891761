// The name of an input that is no file: "tcp://host:port?timeout=30".
#pragma once

#include <map>
#include <string>
#include <string_view>

struct InputUrl {
    std::string scheme;    // in small letters
    std::string user;      // decoded
    std::string host;      // without brackets
    unsigned port = 0;     // 0 where there is none
    std::string path;      // behind the host, without "/"; of a serial line the device
    std::map<std::string, std::string> parameters;

    double number(const std::string& parameter, double otherwise) const;
    std::string text(const std::string& parameter, const std::string& otherwise = {}) const;

    // Throws UrlError, which says what is expected, where the value of the parameter is not good.
    void require(const std::string& parameter, bool isGood, const std::string& expected) const;

    // Host and port as they stand in an URL.
    std::string authority() const;
    // For people: neither user nor parameters.
    std::string shown() const;
};

// With "@" for "%40"; what is no such pair stays as it is.
std::string percentDecoded(std::string_view text);

// Whether it is not the name of a file.
bool isUrl(std::string_view name);

// What is wrong with it, for people, with what is expected.
struct UrlError {
    std::string text;
};

// Throws UrlError.
InputUrl inputUrl(const std::string& name);
