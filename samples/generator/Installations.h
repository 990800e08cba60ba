// Installations: the hand-made one of the instrument, and ones of any size grown from it.
#pragma once

#include <cstddef>
#include <cstdint>

#include "Installation.h"

namespace vrn::samples {

struct Sizes {
    std::size_t macros = 70;
    std::size_t objects = 150;
    std::size_t names = 40;
    std::size_t steps = 10;
    std::size_t descriptionLines = 5;
    std::uint64_t seed = 1;
};

[[nodiscard]] Installation instrumentInstallation();

/// Exactly so many macros, objects and names. Objects and names are taken from their types in turn, so that small
/// sets hold something of every type; beyond the tables numbered variants follow.
[[nodiscard]] Installation installationOfSize(const Sizes& sizes);

/// A method of exactly so many steps and description lines, valid in the installation.
[[nodiscard]] MethodDraft draftOfSize(const Installation& installation, const Sizes& sizes);

}  // namespace vrn::samples
