#include "python/frame/OutputOrder.h"

#include "core/Output.h"
#include "python/frame/Api.h"

namespace Yul::python {
namespace {

/// Calls a method without arguments and drops its result and its errors; an interrupt of the user comes again when Python
/// goes on.
void callQuietly(PyObject * object, char const * method)
{
    Ref const result(object != nullptr ? PyObject_CallMethod(object, method, nullptr) : nullptr);
    if (PyErr_Occurred() == nullptr)
        return;
    bool const is_interrupt = PyErr_ExceptionMatches(PyExc_KeyboardInterrupt) != 0;
    PyErr_Clear();
    if (is_interrupt)
        PyErr_SetInterrupt();
}

void flushStream(char const * name)
{
    Ref const stream = Ref::borrow(PySys_GetObject(name));
    if (stream && stream.get() != Py_None)
        callQuietly(stream.get(), "flush");
}

/// A stream's flush may itself write through the library; that write is not flushed before again.
class Once
{
public:
    Once() : is_first(!is_running) { is_running = true; }

    ~Once() { is_running = !is_first; }

    Once(Once const &) = delete;
    Once & operator=(Once const &) = delete;

    bool const is_first;

private:
    static inline bool is_running = false;
};

void flushStreams()
{
    Once const once;
    if (!once.is_first || Py_IsInitialized() == 0)
        return;
    PendingError const pending;
    flushStream("stdout");
    flushStream("stderr");
}

/// Flushes every file object that is still open.
void flushFiles()
{
    Ref const io(PyImport_ImportModule("io"));
    Ref const base(io ? PyObject_GetAttrString(io.get(), "IOBase") : nullptr);
    Ref const collector(PyImport_ImportModule("gc"));
    Ref const objects(collector ? PyObject_CallMethod(collector.get(), "get_objects", nullptr) : nullptr);
    Py_ssize_t const count = base && objects ? PyList_Size(objects.get()) : 0;
    for (Py_ssize_t i = 0; i < count; ++i) {
        PyObject * const object = PyList_GetItem(objects.get(), i);
        if (object != nullptr && PyObject_IsInstance(object, base.get()) == 1)
            callQuietly(object, "flush");
        PyErr_Clear();
    }
}

void leave()
{
    if (Py_IsInitialized() == 0)
        return;
    PendingError const pending;
    Ref const handlers(PyImport_ImportModule("atexit"));
    callQuietly(handlers.get(), "_run_exitfuncs");
    flushFiles();
    flushStreams();
}

} // namespace

void orderOutput()
{
    ::Yul::detail::setFlushHook(flushStreams);
    ::Yul::detail::setExitHook(leave);
}

} // namespace Yul::python
