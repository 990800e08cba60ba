// The namespaces in scope while a tree is written.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::xml {

class NamespaceScope {
    struct Declaration {
        std::string prefix;
        std::string uri;
        std::size_t depth;
    };

  public:
    /// Each element opens a level; its declarations end with it.
    void open() { ++depth_; }
    void close() {
        while (!declarations_.empty() && declarations_.back().depth == depth_) {
            declarations_.pop_back();
        }
        --depth_;
    }

    void declare(std::string_view prefix, std::string_view uri) {
        declarations_.push_back({std::string(prefix), std::string(uri), depth_});
    }

    /// The namespace of a prefix ("" for the default one); empty when there is none. Valid until the next declaration.
    [[nodiscard]] std::string_view uriOf(std::string_view prefix) const noexcept {
        const auto latest = std::find_if(declarations_.rbegin(), declarations_.rend(),
                                         [prefix](const Declaration& declared) { return declared.prefix == prefix; });
        return latest == declarations_.rend() ? std::string_view{} : latest->uri;
    }

  private:
    std::size_t depth_ = 0;
    std::vector<Declaration> declarations_;
};

}  // namespace vrn::xml
