#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <unordered_set>

#include "hosts/cli/MethodRun.h"
#include "hosts/cli/Output.h"

namespace vrn::cli {

namespace {

namespace fs = std::filesystem;

constexpr std::array<std::string_view, 3> setNames{"macros.xml", "objects.xml", "config.xml"};

bool isSetName(std::string_view name) { return std::find(setNames.begin(), setNames.end(), name) != setNames.end(); }

bool isXmlName(std::string_view name) {
    constexpr std::string_view wanted = ".xml";
    return name.size() >= wanted.size() &&
           std::equal(wanted.begin(), wanted.end(), name.end() - wanted.size(), [](char a, char b) {
               return a == (b >= 'A' && b <= 'Z' ? static_cast<char>(b + ('a' - 'A')) : b);
           });
}

// A file or folder in a folder. Its path is kept as text: taking paths apart costs more than all else here.
struct Entry {
    std::string path;
    std::size_t nameAt = 0;  ///< where the name begins in it
    bool isXmlFile = false;
    bool isFolder = false;
    bool isLink = false;

    [[nodiscard]] std::string_view name() const { return std::string_view(path).substr(nameAt); }
};

Entry entryOf(const fs::directory_entry& found, std::size_t nameAt) {
    Entry entry{found.path().string(), nameAt};
    std::error_code error;
    entry.isLink = found.is_symlink(error);
    entry.isXmlFile = isXmlName(entry.name()) && found.is_regular_file(error);
    // A link to a folder is not followed: it may lead back up.
    entry.isFolder = !entry.isLink && found.is_directory(error);
    return entry;
}

// What is not hidden in a folder, in order of the names.
std::vector<Entry> entriesOf(const std::string& folder, std::error_code& error) {
    std::vector<Entry> entries;
    const auto nameAt = (fs::path(folder) / "").string().size();
    for (fs::directory_iterator found(folder, error), end; !error && found != end; found.increment(error)) {
        if (auto entry = entryOf(*found, nameAt); !entry.name().starts_with('.')) {
            entries.push_back(std::move(entry));
        }
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.name() < b.name(); });
    return entries;
}

bool holdsSet(const std::vector<Entry>& entries) {
    return std::all_of(setNames.begin(), setNames.end(), [&](std::string_view name) {
        return std::any_of(entries.begin(), entries.end(), [name](const Entry& entry) { return entry.name() == name; });
    });
}

class Finder {
  public:
    Finder(const std::vector<std::string>& setFiles, const MethodFound& found) : found_(&found) {
        for (const auto& path : setFiles) {
            setFiles_.insert(identity(path));
        }
    }

    void add(const std::string& argument) {
        const auto absent = std::make_error_code(std::errc::no_such_file_or_directory);
        std::error_code error;
        if (argument == standardInput) {
            addFile(argument, argument);
        } else if (!fs::exists(argument, error)) {
            report({argument, displayName(argument) + ": " + unreadable(error ? error : absent)});
        } else if (!fs::is_directory(argument, error)) {
            addFile(argument, identity(argument));
        } else if (const auto before = reported_; !addFolder(argument) && reported_ == before) {
            report({argument, "no methods found in " + displayName(argument)});
        }
    }

  private:
    // What two names of one file have in common.
    static std::string identity(const std::string& path) {
        std::error_code error;
        const auto canonical = fs::canonical(path, error);
        return error ? path : canonical.string();
    }

    void addFile(const std::string& path, std::string identity) {
        if (known_.insert(std::move(identity)).second) {
            report({path, {}});
        }
    }

    void report(MethodFile file) {
        ++reported_;
        (*found_)(std::move(file));
    }

    // Whether it has methods, whether or not they were reported before.
    bool addFolder(const std::string& folder) {
        std::error_code error;
        const auto entries = entriesOf(folder, error);
        if (error) {
            report({folder, displayName(folder) + ": " + unreadable(error)});
        }
        // To ask the system for each file's own name would take as long as to read it.
        const auto home = (fs::path(identity(folder)) / "").string();
        const bool passOverSet = holdsSet(entries);
        bool found = false;
        for (const auto& each : entries) {
            if (each.isFolder) {
                found = addFolder(each.path) || found;
            } else if (each.isXmlFile) {
                auto file = each.isLink ? identity(each.path) : home + std::string(each.name());
                if (!(passOverSet && isSetName(each.name())) && !setFiles_.contains(file)) {
                    found = true;
                    addFile(each.path, std::move(file));
                }
            }
        }
        return found;
    }

    std::unordered_set<std::string> setFiles_;
    std::unordered_set<std::string> known_;
    const MethodFound* found_;
    std::size_t reported_ = 0;
};

}  // namespace

void findMethodFiles(const std::vector<std::string>& arguments, const std::vector<std::string>& setFiles,
                     const MethodFound& found) {
    Finder finder(setFiles, found);
    for (const auto& argument : arguments) {
        finder.add(argument);
    }
}

}  // namespace vrn::cli
