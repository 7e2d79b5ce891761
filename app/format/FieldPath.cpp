#include "format/FieldPath.h"

#include <algorithm>

namespace {

std::vector<ChosenField> allFields(const KindModel& kind)
{
    std::vector<ChosenField> all;
    for (const FieldModel& field : kind.fields) {
        all.push_back({&field, field.element != nullptr ? allFields(*field.element)
                                                        : std::vector<ChosenField>()});
    }
    return all;
}

std::vector<ChosenField> chosenParts(const FieldModel& field, const std::vector<FieldPath>& paths)
{
    std::vector<ChosenField> parts;
    for (const FieldModel& part : field.element->fields) {
        if (std::any_of(paths.begin(), paths.end(), [&](const FieldPath& path) {
                return path == FieldPath{&field, nullptr} || path == FieldPath{&field, &part};
            })) {
            parts.push_back({&part});
        }
    }
    return parts;
}

}    // namespace

FieldLookup lookUp(const KindModel& kind, const std::vector<std::string_view>& names)
{
    FieldLookup lookup{.path = {}, .known = 0, .holder = &kind};
    for (const std::string_view name : names) {
        const FieldModel* const found =
            lookup.holder != nullptr ? lookup.holder->field(name) : nullptr;
        if (found == nullptr) {
            break;
        }
        (lookup.known == 0 ? lookup.path.field : lookup.path.part) = found;
        lookup.holder = found->element;
        ++lookup.known;
    }
    return lookup;
}

FieldPath pathOf(const KindModel& kind, std::string_view name)
{
    if (const FieldModel* field = kind.field(name)) {
        return {field, nullptr};
    }
    for (std::size_t dot = name.find('.'); dot != name.npos; dot = name.find('.', dot + 1)) {
        const FieldLookup lookup = lookUp(kind, {name.substr(0, dot), name.substr(dot + 1)});
        if (lookup.known == 2) {
            return lookup.path;
        }
    }
    return {};
}

std::vector<FieldPath> pathsOf(const KindModel& kind, const std::vector<std::string>& names)
{
    std::vector<FieldPath> paths;
    for (const std::string& name : names) {
        if (const FieldPath path = pathOf(kind, name); path.field != nullptr) {
            paths.push_back(path);
        }
    }
    return paths;
}

void checkNames(const std::vector<const KindModel*>& kinds, const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        if (std::none_of(kinds.begin(), kinds.end(), [&](const KindModel* kind) {
                return pathOf(*kind, name).field != nullptr;
            })) {
            throw FieldPathError{"no chosen kind of message has a field '" + name +
                                 "' ('rtcm2 describe' lists them)"};
        }
    }
}

std::vector<ChosenField> chosenFields(const KindModel& kind, const std::vector<std::string>& names)
{
    if (names.empty()) {
        return allFields(kind);
    }
    const std::vector<FieldPath> paths = pathsOf(kind, names);
    std::vector<ChosenField> chosen;
    for (const FieldModel& field : kind.fields) {
        if (std::any_of(paths.begin(), paths.end(),
                        [&](const FieldPath& path) { return path.field == &field; })) {
            chosen.push_back({&field, field.element != nullptr ? chosenParts(field, paths)
                                                               : std::vector<ChosenField>()});
        }
    }
    return chosen;
}
