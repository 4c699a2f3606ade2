#include "CorvaneCore/widgets/pet/PetCoat.hpp"

#include <array>

namespace corvane {

namespace {

using Coats = std::vector<PetCoat>;

// Fur, markings, belly, eyes, accent (collar, scarf, flame or trim).
const std::array<Coats, EnumCases<PetSpecies>::names.size()> kCoats = {
    // cat
    Coats{{"ginger", "Ginger", "#E8913A", "#B8621B", "#F7D9B0", "#6BAA3F", "#D6304A"},
          {"tuxedo", "Tuxedo", "#2B2B2E", "#2B2B2E", "#F4F4F2", "#E2C044", "#3A7BD5"},
          {"silver", "Silver tabby", "#A9ADB3", "#5F6369", "#E4E6E8", "#4FA3A5", "#8E5AC8"}},
    // dog
    Coats{{"golden", "Golden", "#D9A441", "#A8761F", "#F3DFB4", "#3D2A17", "#C8342C"},
          {"dalmatian", "Dalmatian", "#F6F5F0", "#1E1E1E", "#FFFFFF", "#3D2A17", "#2F80ED"},
          {"chocolate", "Chocolate", "#6B4226", "#4A2C18", "#A77B5B", "#2A1A0E", "#3FAE5A"}},
    // bird
    Coats{{"budgie", "Budgie", "#7BC950", "#2F5E1C", "#E9F27A", "#111111", "#3B82F6"},
          {"robin", "Robin", "#7A5C48", "#4B382B", "#E2673A", "#111111", "#F2C14E"}},
    // dragon
    Coats{{"ember", "Ember", "#C8372D", "#7E1F19", "#F2B36B", "#F7E15B", "#FF8C1A"},
          {"jade", "Jade", "#3E9E6E", "#1F5E40", "#BFE3C0", "#F2D24B", "#7AD3F0"}},
    // dino
    Coats{{"moss", "Moss", "#6E9A3C", "#3F5E21", "#D5E3A8", "#1B1B1B", "#E0B040"},
          {"lava", "Lava", "#8A4FBF", "#5A2E86", "#E2C8F2", "#1B1B1B", "#FF6A3D"}},
    // warriorGirl
    Coats{{"crimson", "Crimson", "#F1C9A5", "#7A2E1D", "#C0392B", "#3B2A20", "#D4AF37"},
          {"forest", "Forest", "#E0B48F", "#2E1F14", "#2E7D4F", "#2C4A2A", "#B0B7BD"}},
    // warriorBoy
    Coats{{"azure", "Azure", "#E8BE98", "#3A2616", "#2F6DB5", "#2B3A55", "#C0C6CC"},
          {"ember", "Ember", "#C68E66", "#1E140C", "#A8432A", "#2A1D12", "#E5A823"}},
    // santa
    Coats{{"classic", "Classic", "#F2CDB0", "#FFFFFF", "#C62828", "#2B2B2B", "#1B1B1B"},
          {"evergreen", "Evergreen", "#F2CDB0", "#FFFFFF", "#2E7D32", "#2B2B2B", "#D4AF37"}},
    // ghost
    Coats{{"mist", "Mist", "#F4F6FA", "#C9D1DE", "#FFFFFF", "#1F2430", "#8AB4F8"},
          {"glow", "Glow", "#D9FBE8", "#8FE3B8", "#F2FFF8", "#10351F", "#5BE39A"}},
};

} // namespace

const std::vector<PetCoat>& coats(PetSpecies species) {
    return kCoats[static_cast<std::size_t>(species)];
}

const PetCoat& coat(PetSpecies species, const std::optional<std::string>& coatID) {
    const auto& list = coats(species);
    if (coatID)
        for (const auto& candidate : list)
            if (candidate.id == *coatID) return candidate;
    return list.front();
}

} // namespace corvane
