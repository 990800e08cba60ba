// Which methods a call means: files, folders with all their XML files, standard input.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace vrn::cli {

struct MethodFile {
    std::string path;
    std::string fault;  ///< why there is nothing to read; empty when there is
};

/// Tells `found` of the files behind the arguments, each once: a folder stands for the files below it that end in ".xml", in order of
/// their names, without hidden ones, without `setFiles`, and without the documents of a set where all three of them lie under their
/// usual names.
void findMethodFiles(const std::vector<std::string>& arguments, const std::vector<std::string>& setFiles,
                     const std::function<void(MethodFile)>& found);

}  // namespace vrn::cli
