// One message in JSON, as `export` writes it, becomes a packed message.
#pragma once

#include "commands/encode/MessageEncoder.h"

#include <rapidjson/document.h>

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

class JsonMessage {
public:
    // The packed message, valid until the next call; empty when there was a problem.
    std::span<const std::uint8_t> encode(const rapidjson::Value& object);

    // What was wrong, naming kind and member.
    std::string problem() const;

private:
    using Member = MessageEncoder::Member;

    void encodeFields(const rapidjson::Value& object, const rapidjson::Value& fields);
    void takeHex(const rapidjson::Value& object);
    void setMembers(const rapidjson::Value& fields);
    void setMember(Member member, const rapidjson::Value& value);
    void setInteger(Member member, const rapidjson::Value& value);
    void setReal(Member member, const rapidjson::Value& value);
    void setText(Member member, const rapidjson::Value& value);
    void setBytes(Member member, const rapidjson::Value& value);
    void setElements(Member member, const rapidjson::Value& value);

    std::unique_ptr<MessageEncoder> encoder = makeMessageEncoder();
    std::string ownProblem;
    std::string characters;
    std::vector<std::uint8_t> hexBytes;
    std::span<const std::uint8_t> packed;
};
