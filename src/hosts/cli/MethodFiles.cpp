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

bool isXmlFile(const fs::directory_entry& entry) {
    std::error_code error;
    auto extension = entry.path().extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return extension == ".xml" && entry.is_regular_file(error);
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
        const fs::path home = identity(folder.string());
        std::vector<fs::directory_entry> entries;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
            if (!entry->path().filename().string().starts_with('.')) {
                entries.push_back(*entry);
            }
        }
        if (error) {
            files_.push_back({folder.string(), displayName(folder.string()) + ": " + error.message()});
        }
        std::sort(entries.begin(), entries.end(),
                  [](const auto& a, const auto& b) { return a.path().native() < b.path().native(); });
        const bool holdsSet = std::all_of(setNames.begin(), setNames.end(), [&](std::string_view name) {
            return std::any_of(entries.begin(), entries.end(),
                               [name](const auto& entry) { return entry.path().filename() == name; });
        });
        bool found = false;
        for (const auto& entry : entries) {
            // A link to a folder is not followed: it may lead back up.
            if (entry.is_directory(error) && !entry.is_symlink(error)) {
                found = addFolder(entry.path()) || found;
            } else if (isXmlFile(entry)) {
                found = true;
                const auto path = entry.path().string();
                if (holdsSet && isSetName(entry.path().filename().string())) {
                    continue;
                }
                // Asking the system for each file's own name would take as long as reading it.
                const auto file = entry.is_symlink(error) ? identity(path) : (home / entry.path().filename()).string();
                if (!setFiles_.contains(file)) {
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
