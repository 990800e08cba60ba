// Files of a sample set.
#pragma once

#include <filesystem>
#include <string_view>

namespace vrn::samples {

/// Writes the bytes as they are, creating folders on the way. Throws when that is not possible.
void writeFile(const std::filesystem::path& path, std::string_view bytes);

}  // namespace vrn::samples
