// Which methods a call means: files, folders with all their XML files, standard input.
#pragma once

#include <string>
#include <vector>

namespace vrn::cli {

struct MethodFile {
    std::string path;
    std::string fault;  ///< why there is nothing to read; empty when there is
};

/// The files behind the arguments, each once: a folder stands for the files below it that end in ".xml", in order of their names,
/// without hidden ones, without `setFiles`, and without the documents of a set where all three of them lie under their usual names.
[[nodiscard]] std::vector<MethodFile> methodFiles(const std::vector<std::string>& arguments,
                                                  const std::vector<std::string>& setFiles);

}  // namespace vrn::cli
