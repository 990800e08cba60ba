// What the registry holds below some keys, to bring it back there after a registration that failed halfway.
#pragma once

#include <windows.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vrn::activex {

class RegistrySnapshot {
  public:
    /// A key of HKEY_CLASSES_ROOT; `view` is 0 or one of KEY_WOW64_32KEY and KEY_WOW64_64KEY.
    struct Root {
        std::wstring key;
        REGSAM view = 0;
    };
    /// Reads what is there; a key that is not there counts as such. Throws std::bad_alloc.
    explicit RegistrySnapshot(std::vector<Root> roots);

    /// Takes away what has come since, writes back what has gone or changed, and leaves everything else alone. What the
    /// system refuses stays as it is.
    void restore() const noexcept;

  private:
    struct Value {
        DWORD type = REG_NONE;
        std::vector<std::uint8_t> data;
        bool operator==(const Value&) const = default;
    };
    struct Key {
        bool present = false;
        std::map<std::wstring, Value> values;
        std::map<std::wstring, Key> keys;
        bool operator==(const Key&) const = default;
    };
    static Key read(HKEY parent, const std::wstring& path, REGSAM view);
    static void restore(HKEY parent, const std::wstring& path, REGSAM view, const Key& before, const Key& now);

    std::vector<Root> roots_;
    std::vector<Key> before_;
};

}  // namespace vrn::activex
