#include "hosts/activex/server/RegistrySnapshot.h"

#include <utility>

namespace vrn::activex {

namespace {

constexpr DWORD longestName = 16384;  // of a value; a key's is 256

class OpenKey {
  public:
    OpenKey(HKEY parent, const std::wstring& path, REGSAM rights) {
        RegOpenKeyExW(parent, path.c_str(), 0, rights, &key_);
    }
    ~OpenKey() {
        if (key_ != nullptr) {
            RegCloseKey(key_);
        }
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    [[nodiscard]] HKEY get() const noexcept { return key_; }

  private:
    HKEY key_ = nullptr;
};

std::vector<std::wstring> keysOf(HKEY key) {
    std::vector<std::wstring> names;
    std::wstring name(longestName, L'\0');
    for (DWORD i = 0;; ++i) {
        auto length = longestName;
        if (RegEnumKeyExW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
            return names;
        }
        names.push_back(name.substr(0, length));
    }
}

std::vector<std::wstring> valuesOf(HKEY key) {
    std::vector<std::wstring> names;
    std::wstring name(longestName, L'\0');
    for (DWORD i = 0;; ++i) {
        auto length = longestName;
        if (RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
            return names;
        }
        names.push_back(name.substr(0, length));
    }
}

}  // namespace

RegistrySnapshot::RegistrySnapshot(std::vector<Root> roots) : roots_(std::move(roots)) {
    for (const auto& root : roots_) {
        before_.push_back(read(HKEY_CLASSES_ROOT, root.key, root.view));
    }
}

RegistrySnapshot::Key RegistrySnapshot::read(HKEY parent, const std::wstring& path, REGSAM view) {
    Key found;
    const OpenKey key(parent, path, KEY_READ | view);
    if (key.get() == nullptr) {
        return found;
    }
    found.present = true;
    for (const auto& name : valuesOf(key.get())) {
        Value value;
        DWORD size = 0;
        if (RegQueryValueExW(key.get(), name.c_str(), nullptr, &value.type, nullptr, &size) == ERROR_SUCCESS) {
            value.data.resize(size);
            RegQueryValueExW(key.get(), name.c_str(), nullptr, &value.type, value.data.data(), &size);
            value.data.resize(size);
        }
        found.values.emplace(name, std::move(value));
    }
    for (const auto& name : keysOf(key.get())) {
        found.keys.emplace(name, read(key.get(), name, view));
    }
    return found;
}

void RegistrySnapshot::restore() const noexcept {
    for (std::size_t i = 0; i < roots_.size(); ++i) {
        const auto& [key, view] = roots_[i];
        try {
            restore(HKEY_CLASSES_ROOT, key, view, before_[i], read(HKEY_CLASSES_ROOT, key, view));
        } catch (...) {
            continue;  // short of memory: the other ones may be small enough
        }
    }
}

void RegistrySnapshot::restore(HKEY parent, const std::wstring& path, REGSAM view, const Key& before, const Key& now) {
    if (before == now) {
        return;
    }
    if (!before.present) {
        // From the key above: a view is chosen on the way to it.
        const auto end = path.rfind(L'\\');
        const bool deeper = end != std::wstring::npos;
        const OpenKey above(parent, deeper ? path.substr(0, end) : L"", KEY_READ | KEY_WRITE | DELETE | view);
        RegDeleteTreeW(above.get(), deeper ? path.c_str() + end + 1 : path.c_str());
        return;
    }
    HKEY key = nullptr;
    if (RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE | view, nullptr, &key, nullptr) !=
        ERROR_SUCCESS) {
        return;
    }
    for (const auto& [name, value] : now.values) {
        if (!before.values.contains(name)) {
            RegDeleteValueW(key, name.c_str());
        }
    }
    for (const auto& [name, value] : before.values) {
        if (const auto found = now.values.find(name); found == now.values.end() || !(found->second == value)) {
            RegSetValueExW(key, name.c_str(), 0, value.type, value.data.data(), static_cast<DWORD>(value.data.size()));
        }
    }
    auto names = now.keys;
    names.insert(before.keys.begin(), before.keys.end());
    for (const auto& [name, ignored] : names) {
        const auto was = before.keys.find(name);
        const auto is = now.keys.find(name);
        restore(key, name, view, was != before.keys.end() ? was->second : Key{},
                is != now.keys.end() ? is->second : Key{});
    }
    RegCloseKey(key);
}

}  // namespace vrn::activex
