// The scripted host over the real control: the line protocol, its calls through COM, its user's requests through the windows.
#pragma once

namespace vrn::sample {

/// Answers the lines of standard input until it ends. The calling thread becomes the one of the windows. The answer is the
/// program's exit status.
[[nodiscard]] int runScriptHost();

}  // namespace vrn::sample
