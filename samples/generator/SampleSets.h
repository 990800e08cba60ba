// Whole sets: the documents of an installation and methods for it, as files.
#pragma once

#include <filesystem>

#include "Installations.h"

namespace vrn::samples {

void writeTutorial(const std::filesystem::path& folder);
void writeInstrument(const std::filesystem::path& folder);
void writeSetOfSize(const std::filesystem::path& folder, const Sizes& sizes);

}  // namespace vrn::samples
