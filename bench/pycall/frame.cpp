// Plane through the frame.
#include "plane.h"
#include "python/frame/Class.h"

namespace Yul::python {
namespace {

void bindPlane(Module & m)
{
    Class<Plane>(m, "Plane")
        .constructor<int, int>()
        .method("getNx", &Plane::getNx)
        .method("getValue", &Plane::getValue);
}

constexpr Module::Binder BINDERS[] = {bindPlane};

} // namespace
} // namespace Yul::python

PyMODINIT_FUNC PyInit_pycall_frame()
{
    return Yul::python::Module::make("pycall_frame", nullptr, Yul::python::BINDERS);
}
