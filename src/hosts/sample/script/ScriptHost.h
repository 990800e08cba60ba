// The scripted host over the real control: the line protocol, its calls through COM, its user's requests through the windows.
#pragma once

#include <iosfwd>

namespace vrn::sample {

/// One session with a control of its own: answers the lines of `in` until it ends. The calling thread, which has OLE, becomes the
/// one of the windows meanwhile.
void runScriptHost(std::istream& in, std::ostream& out);

/// The session of standard input and output.
void runScriptHost();

}  // namespace vrn::sample
