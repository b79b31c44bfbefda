#include "python/frame/ArrayView.h"

namespace Yul::python {
namespace {

/// What an exporter holds: the view, its strides and its owner.
struct Export
{
    ArrayView view;
    std::vector<Py_ssize_t> strides;
    Py_ssize_t size = 0; // octets
    Ref owner;
};

struct ExporterObject
{
    PyObject_HEAD // the interpreter's fields
        Export * content;
};

Export & contentOf(PyObject * object)
{
    return *reinterpret_cast<ExporterObject *>(object)->content;
}

void deallocate(PyObject * object)
{
    std::unique_ptr<Export> const content(&contentOf(object));
    PyTypeObject * const type = Py_TYPE(object);
    PyObject_Free(object);
    Py_DECREF(type);
}

int getBuffer(PyObject * object, Py_buffer * buffer, int flags)
{
    Export & content = contentOf(object);
    ArrayView const & view = content.view;
    static char nothing = '\0'; // an empty array has a place too
    void * const place = content.size != 0 ? view.data.get() : &nothing;
    if (PyBuffer_FillInfo(buffer, object, place, content.size, view.is_read_only ? 1 : 0, flags) != 0)
        return -1;
    buffer->itemsize = static_cast<Py_ssize_t>(view.item_size);
    if ((flags & PyBUF_FORMAT) == PyBUF_FORMAT)
        buffer->format = const_cast<char *>(view.format);
    if ((flags & PyBUF_ND) == PyBUF_ND) {
        buffer->ndim = static_cast<int>(view.shape.size());
        buffer->shape = content.view.shape.data();
    }
    if ((flags & PyBUF_STRIDES) == PyBUF_STRIDES)
        buffer->strides = content.strides.data();
    return 0;
}

PyTypeObject * exporterType()
{
    static PyTypeObject * const TYPE = [] {
        PyType_Slot slots[] = {
            {Py_tp_dealloc, reinterpret_cast<void *>(deallocate)},
            {Py_bf_getbuffer, reinterpret_cast<void *>(getBuffer)},
            {0, nullptr},
        };
        PyType_Spec spec{"_Yul.ArrayExporter", static_cast<int>(sizeof(ExporterObject)), 0,
                         Py_TPFLAGS_DEFAULT | Py_TPFLAGS_DISALLOW_INSTANTIATION | Py_TPFLAGS_IMMUTABLETYPE,
                         slots};
        return reinterpret_cast<PyTypeObject *>(PyType_FromSpec(&spec));
    }();
    return TYPE;
}

std::unique_ptr<Export> makeExport(ArrayView view, PyObject * owner)
{
    auto content = std::make_unique<Export>();
    content->strides.resize(view.shape.size());
    content->size = static_cast<Py_ssize_t>(view.item_size);
    for (std::size_t i = view.shape.size(); i-- > 0;) {
        content->strides[i] = content->size;
        content->size *= view.shape[i];
    }
    content->view = std::move(view);
    content->owner = Ref::borrow(owner);
    return content;
}

} // namespace

PyObject * newMemoryView(ArrayView view, PyObject * owner)
{
    if (view.shape.empty())
        return Py_NewRef(Py_None);
    auto content = makeExport(std::move(view), owner);
    if (exporterType() == nullptr)
        return nullptr;
    Ref const exporter(PyType_GenericAlloc(exporterType(), 0));
    if (!exporter)
        return nullptr;
    reinterpret_cast<ExporterObject *>(exporter.get())->content = content.release();
    return PyMemoryView_FromObject(exporter.get());
}

} // namespace Yul::python
