// Plane through pybind11, as free functions.
#include "plane.h"

#include <pybind11/pybind11.h>

PYBIND11_MODULE(pycall_pybind, m)
{
    pybind11::class_<Plane>(m, "new_Plane").def(pybind11::init<int, int>());
    m.def("Plane_getNx", [](Plane const & plane) { return plane.getNx(); });
    m.def("Plane_getValue", [](Plane const & plane, int i, int j) { return plane.getValue(i, j); });
    m.attr("version") = PYBIND11_TOSTRING(PYBIND11_VERSION_MAJOR) "." PYBIND11_TOSTRING(
        PYBIND11_VERSION_MINOR) "." PYBIND11_TOSTRING(PYBIND11_VERSION_PATCH);
}
