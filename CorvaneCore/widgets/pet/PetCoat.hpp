#pragma once

#include "CorvaneCore/widgets/WidgetSettings.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// One colouring of a species' drawings, as hex colours.
struct PetCoat {
    std::string id;
    std::string title;
    std::string fur;
    std::string markings;
    std::string belly;
    std::string eyes;
    std::string accent;

    bool operator==(const PetCoat&) const = default;
};

/// The coats a species comes in; the first is the one a new pet wears. Never empty.
const std::vector<PetCoat>& coats(PetSpecies species);
/// The coat `coatID` names, or the species' first when it names none of them (a coat of
/// another species, or one a later build dropped).
const PetCoat& coat(PetSpecies species, const std::optional<std::string>& coatID);

} // namespace corvane
