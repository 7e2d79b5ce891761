#include "commands/encode/CodedValue.h"

#include "base/NearestName.h"
#include "commands/encode/JsonValue.h"
#include "format/FieldText.h"

#include <set>

namespace {

std::set<std::int64_t> valuesOf(const std::vector<RTCM2_text_s>& texts, std::string_view text)
{
    std::set<std::int64_t> values;
    for (const RTCM2_text_s& coded : texts) {
        if (coded.text == text) {
            values.insert(coded.value);
        }
    }
    return values;
}

std::string unknownText(const std::vector<RTCM2_text_s>& texts, std::string_view text)
{
    std::vector<std::string> names;
    for (const RTCM2_text_s& coded : texts) {
        names.push_back(quoted(coded.text));
    }
    const std::string meant = suggestion(nearestNames(text, names));
    return "no value means " + quoted(text) + (meant.empty() ? "" : "; " + meant);
}

}    // namespace

const char* ownText(const RTCM2_member_s& member, std::int64_t value)
{
    const std::vector<RTCM2_text_s> texts = codedTexts(member);
    for (const RTCM2_text_s& coded : texts) {
        if (coded.value == value && valuesOf(texts, coded.text).size() == 1) {
            return coded.text;
        }
    }
    return nullptr;
}

std::string readCoded(const RTCM2_member_s& member, std::string_view text,
                      std::vector<std::int64_t>& integers)
{
    const std::vector<RTCM2_text_s> texts = codedTexts(member);
    const std::set<std::int64_t> values = valuesOf(texts, text);
    if (values.size() == 1) {
        integers.push_back(*values.begin());
        return {};
    }
    return texts.empty() ? "has to be an integer"
           : values.empty()
               ? unknownText(texts, text)
               : "several values mean " + quoted(text) + ", so it has to be an integer";
}
