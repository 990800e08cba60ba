#include "hosts/cli/MethodFiles.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

#include "hosts/cli/Names.h"

namespace vrn::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 3> setNames{"macros.xml", "objects.xml", "config.xml"};

bool isSetName(std::string_view name) { return std::find(setNames.begin(), setNames.end(), name) != setNames.end(); }

// A file or folder in a folder. The name is kept apart: taking it out of a path costs more than all else here.
struct Entry {
    std::string name;
    fs::directory_entry entry;

    [[nodiscard]] bool isXmlFile() const {
        constexpr std::string_view wanted = ".xml";
        const auto extension = name.size() < wanted.size() ? std::string_view()
                                                           : std::string_view(name).substr(name.size() - wanted.size());
        std::error_code error;
        return std::equal(extension.begin(), extension.end(), wanted.begin(), wanted.end(),
                          [](char a, char b) {
                              return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + ('a' - 'A')) : a) == b;
                          }) &&
               entry.is_regular_file(error);
    }
    // A link to a folder is not followed: it may lead back up.
    [[nodiscard]] bool isFolder() const {
        std::error_code error;
        return entry.is_directory(error) && !entry.is_symlink(error);
    }
};

// What is not hidden in a folder, in order of the names.
std::vector<Entry> entriesOf(const fs::path& folder, std::error_code& error) {
    std::vector<Entry> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (auto name = entry->path().filename().string(); !name.starts_with('.')) {
            entries.push_back({std::move(name), *entry});
        }
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.name < b.name; });
    return entries;
}

bool holdsSet(const std::vector<Entry>& entries) {
    return std::all_of(setNames.begin(), setNames.end(), [&](std::string_view name) {
        return std::any_of(entries.begin(), entries.end(), [name](const Entry& entry) { return entry.name == name; });
    });
}

class Collector {
  public:
    explicit Collector(const std::vector<std::string>& setFiles) {
        for (const auto& path : setFiles) {
            setFiles_.insert(identity(path));
        }
    }

    void add(const std::string& argument) {
        std::error_code error;
        if (argument == standardInput) {
            addFile(argument, argument);
        } else if (!fs::exists(argument, error)) {
            const auto reason = error ? error.message() : std::string("no such file or folder");
            files_.push_back({argument, displayName(argument) + ": " + reason});
        } else if (!fs::is_directory(argument, error)) {
            addFile(argument, identity(argument));
        } else if (const auto before = files_.size(); !addFolder(argument) && files_.size() == before) {
            files_.push_back({argument, displayName(argument) + ": holds no *.xml files"});
        }
    }

    [[nodiscard]] std::vector<MethodFile> take() { return std::move(files_); }

  private:
    // What two names of one file have in common.
    static std::string identity(const std::string& path) {
        std::error_code error;
        const auto canonical = fs::canonical(path, error);
        return error ? path : canonical.string();
    }

    void addFile(const std::string& path, const std::string& identity) {
        if (known_.insert(identity).second) {
            files_.push_back({path, {}});
        }
    }

    // Whether it holds XML files at all, wanted or not.
    bool addFolder(const fs::path& folder) {
        std::error_code error;
        const auto entries = entriesOf(folder, error);
        if (error) {
            files_.push_back({folder.string(), displayName(folder.string()) + ": " + error.message()});
        }
        // Asking the system for each file's own name would take as long as reading it.
        const auto home = (fs::path(identity(folder.string())) / "").string();
        const bool passOverSet = holdsSet(entries);
        bool found = false;
        for (const auto& each : entries) {
            const auto path = each.entry.path().string();
            if (each.isFolder()) {
                found = addFolder(each.entry.path()) || found;
            } else if (each.isXmlFile()) {
                found = true;
                const auto file = each.entry.is_symlink(error) ? identity(path) : home + each.name;
                if (!(passOverSet && isSetName(each.name)) && !setFiles_.contains(file)) {
                    addFile(path, file);
                }
            }
        }
        return found;
    }

    std::set<std::string> setFiles_;
    std::set<std::string> known_;
    std::vector<MethodFile> files_;
};

}  // namespace

std::vector<MethodFile> methodFiles(const std::vector<std::string>& arguments,
                                    const std::vector<std::string>& setFiles) {
    Collector collector(setFiles);
    for (const auto& argument : arguments) {
        collector.add(argument);
    }
    return collector.take();
}

}  // namespace vrn::cli
