// The one way to standard output and standard error.
#pragma once

#include <string_view>

namespace Yul::detail {

/// Writes the text at once: it is with the operating system when the call returns.
void writeOut(std::string_view text);
void writeErr(std::string_view text);

/// Sets an operation to run before every write. A host that keeps output buffers of its own (Python) empties
/// them there, so that lines appear in the order in which they were written. Null for none.
void setFlushHook(void (*hook)());
void runFlushHook();

/// Sets an operation to run before the library ends the process: what the host does at its own end.
void setExitHook(void (*hook)());
void runExitHook();

} // namespace Yul::detail
