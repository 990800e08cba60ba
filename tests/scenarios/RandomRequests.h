// Requests that nobody thought of, from a seed. The same seed gives the same requests on every system.
#pragma once

#include <nlohmann/json.hpp>
#include <random>
#include <string>
#include <vector>

namespace vrn::test {

class RandomRequests {
  public:
    using Json = nlohmann::json;

    explicit RandomRequests(unsigned seed) : random_(seed) {}

    /// What a host or its user asks of an editor that holds a document set: often possible, often not.
    [[nodiscard]] Json next();
    /// Selects an entry of the catalogue.
    [[nodiscard]] Json cycle();
    /// What hardly anybody enters, and what no method can keep as it is.
    [[nodiscard]] Json odd();
    /// Hands over a document set: of any sample, mixed from several, or broken.
    [[nodiscard]] Json documents();
    /// A line that is at fault by itself.
    [[nodiscard]] std::string fault();
    /// One in `bound`.
    [[nodiscard]] bool rarely(int bound) { return below(bound) == 0; }

    /// Hands over the tutorial's set with a method, "" for none.
    [[nodiscard]] static Json tutorial(const std::string& method);

  private:
    // The distributions of the standard library draw otherwise on every system.
    int below(int bound) { return static_cast<int>(random_() % static_cast<unsigned>(bound)); }
    template <typename T>
    const T& oneOf(const std::vector<T>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(choices.size())))];
    }
    int row();
    Json selection();
    Json description();
    Json document(const Json& good);

    std::mt19937 random_;
    bool menuAsked_ = false;
};

}  // namespace vrn::test
