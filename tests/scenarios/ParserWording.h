// What a recorded reply owes to the XML parser of the system that it was recorded on.
#pragma once

#include <string>

namespace vrn::test {

/// The reply without what this system's parser tells otherwise than the one of the recordings.
[[nodiscard]] std::string withoutParserWording(std::string reply);

}  // namespace vrn::test
