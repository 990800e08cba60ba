// Lists of names that stay what they are while the documents and the names of the instrument service stay: made once, and shared.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vrn::catalogue {

using SharedText = std::shared_ptr<const std::string>;

/// What is made of parts, one by key. Whoever asks again with the same parts gets what was made before.
template <typename Parts, typename Made>
class MadeOnce {
  public:
    /// `make` makes a `Made` of the parts; when it fails, nothing is kept.
    template <typename Make>
    [[nodiscard]] std::shared_ptr<const Made> of(const std::string& key, Parts parts, Make&& make) {
        auto found = kept_.find(key);
        if (found != kept_.end() && found->second.parts == parts) {
            return found->second.made;
        }
        auto made = std::make_shared<const Made>(make(parts));
        if (found == kept_.end() && kept_.size() == most) {
            kept_.clear();
        }
        kept_.insert_or_assign(key, Kept{std::move(parts), made});
        return made;
    }
    void forget() { kept_.clear(); }

  private:
    struct Kept {
        Parts parts;
        std::shared_ptr<const Made> made;
    };
    /// More than instruments have types of objects. The names that belong to every type are in each of the lists: without a
    /// bound, a catalogue with thousands of types would keep them thousands of times.
    static constexpr std::size_t most = 64;

    std::unordered_map<std::string, Kept> kept_;
};

/// The names that a value of one object type may have, in the order in which they are offered. No text for what is left out.
struct TypeNames {
    SharedText objects;      ///< of the object list
    SharedText userDefined;  ///< those of the type
    SharedText freeText;     ///< those of all types

    /// All of them as one list text.
    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool operator==(const TypeNames& other) const = default;
};

/// The names of several types as the entries of a drop-down list, without empty ones at its ends. A type adds its names when they
/// are not in the list as they stand.
[[nodiscard]] std::vector<std::string> itemsOf(const std::vector<TypeNames>& types);

}  // namespace vrn::catalogue
