// The recorded sessions of this folder, as files and as what is to be asked.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vrn::test {

[[nodiscard]] std::vector<std::string> linesOf(const std::filesystem::path& file);

/// The transcripts of a folder, sorted by name.
[[nodiscard]] std::vector<std::filesystem::path> transcriptsIn(const std::filesystem::path& folder);

/// The requests of a transcript, with its own replies in the place of what stands for replies.
[[nodiscard]] std::vector<std::string> requestsOf(const std::filesystem::path& transcript);

/// The text that in a request stands for the last method that the editor gave.
class LastMethod {
  public:
    [[nodiscard]] std::string filledInto(std::string request) const;
    /// Looks at a reply: it may have given another method.
    void see(const std::string& request, const std::string& reply);

  private:
    std::string json_ = "\"\"";
};

/// `text` with every `from` replaced.
[[nodiscard]] std::string replaced(std::string text, const std::string& from, const std::string& to);

}  // namespace vrn::test
