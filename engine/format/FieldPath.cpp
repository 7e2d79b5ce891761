#include "format/FieldPath.h"

#include "base/NearestName.h"

#include <algorithm>
#include <iterator>

namespace {

// A field and its quantity, those of the two that are chosen.
template <class IsChosen, class PartsOf>
void appendChosen(std::vector<ChosenField>& chosen, const KindModel& kind, const FieldModel& field,
                  IsChosen isChosen, PartsOf partsOf)
{
    const FieldModel* const quantity = kind.quantityOf(field);
    if (isChosen(field, quantity)) {
        chosen.push_back(
            {&field, field.element != nullptr ? partsOf(field) : std::vector<ChosenField>()});
    }
    if (quantity != nullptr && isChosen(*quantity, quantity)) {
        chosen.push_back({quantity});
    }
}

// Of all fields, as `values` says.
std::vector<ChosenField> allFields(const KindModel& kind, Values values)
{
    std::vector<ChosenField> all;
    for (const FieldModel& field : kind.fields) {
        appendChosen(
            all, kind, field,
            [&](const FieldModel& candidate, const FieldModel* quantity) {
                return values == Values::both ||
                       candidate.isQuantity() == (values == Values::scaled && quantity != nullptr);
            },
            [&](const FieldModel& whole) { return allFields(*whole.element, values); });
    }
    return all;
}

std::vector<ChosenField> chosenParts(const FieldModel& field, const std::vector<FieldPath>& paths,
                                     Values values)
{
    const auto contains = [&](const FieldPath& path) {
        return std::find(paths.begin(), paths.end(), path) != paths.end();
    };
    if (contains({&field, nullptr})) {
        return allFields(*field.element, values);
    }
    std::vector<ChosenField> parts;
    for (const FieldModel& part : field.element->fields) {
        appendChosen(
            parts, *field.element, part,
            [&](const FieldModel& candidate, const FieldModel*) {
                return contains({&field, &candidate});
            },
            [](const FieldModel&) { return std::vector<ChosenField>(); });
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

namespace {

// What may have been meant, also by the last part of a path alone.
std::vector<std::string> nearestPaths(const std::string& name,
                                      const std::vector<std::string>& paths)
{
    const std::vector<std::string> nearest = nearestNames(name, paths);
    if (!nearest.empty()) {
        return nearest;
    }
    const auto lastOf = [](const std::string& path) { return path.substr(path.find('.') + 1); };
    std::vector<std::string> parts;
    std::transform(paths.begin(), paths.end(), std::back_inserter(parts), lastOf);
    const std::vector<std::string> likely = nearestNames(name, parts);
    std::vector<std::string> found;
    for (const std::string& path : paths) {
        const bool isLikely = !likely.empty() && lastOf(path) == likely.front();
        if (isLikely && found.size() < 3) {
            found.push_back(path);
        }
    }
    return found;
}

}    // namespace

std::vector<std::string> pathNames(const std::vector<const KindModel*>& kinds)
{
    std::vector<std::string> names;
    const auto add = [&names](const std::string& name) {
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.push_back(name);
        }
    };
    for (const KindModel* kind : kinds) {
        kind->eachField([&](const FieldModel& field) {
            add(field.identifier);
            if (field.element != nullptr) {
                field.element->eachField(
                    [&](const FieldModel& part) { add(field.identifier + "." + part.identifier); });
            }
        });
    }
    return names;
}

void checkNames(const std::vector<const KindModel*>& kinds, const std::vector<std::string>& names)
{
    for (const std::string& name : names) {
        if (std::none_of(kinds.begin(), kinds.end(), [&](const KindModel* kind) {
                return pathOf(*kind, name).field != nullptr;
            })) {
            const std::string meant = suggestion(nearestPaths(name, pathNames(kinds)));
            throw FieldPathError{"no chosen kind of message has a field '" + name + "'" +
                                 (meant.empty() ? " ('rtcm2 describe' lists them)" : "; " + meant)};
        }
    }
}

std::vector<ChosenField> chosenFields(const KindModel& kind, const std::vector<std::string>& names,
                                      Values values)
{
    if (names.empty()) {
        return allFields(kind, values);
    }
    const std::vector<FieldPath> paths = pathsOf(kind, names);
    std::vector<ChosenField> chosen;
    for (const FieldModel& field : kind.fields) {
        appendChosen(
            chosen, kind, field,
            [&](const FieldModel& candidate, const FieldModel*) {
                return std::any_of(paths.begin(), paths.end(),
                                   [&](const FieldPath& path) { return path.field == &candidate; });
            },
            [&](const FieldModel& whole) { return chosenParts(whole, paths, values); });
    }
    return chosen;
}
