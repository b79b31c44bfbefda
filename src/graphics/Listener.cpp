#include "graphics/Listener.h"

namespace Yul {

int Listener::callback(char const * /*name*/, char const * /*event*/, void const * /*data*/)
{
    return 0;
}

} // namespace Yul
