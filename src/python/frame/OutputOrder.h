// Keeps what Python and the library write in the order in which they wrote it.
#pragma once

namespace Yul::python {

/// From now on Python's standard streams are emptied before the library writes and before it ends the
/// process; then Python's exit handlers run too, and files that are still open are flushed.
void orderOutput();

} // namespace Yul::python
