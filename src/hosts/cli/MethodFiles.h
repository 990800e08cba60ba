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
/// usual names. A folder is read to its end before any of its files is told, so that those may be changed at once. `found` answers
/// whether to go on.
void findMethodFiles(const std::vector<std::string>& arguments, const std::vector<std::string>& setFiles,
                     const std::function<bool(MethodFile)>& found);

}  // namespace vrn::cli
