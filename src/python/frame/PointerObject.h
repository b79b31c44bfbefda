// The opaque Python object that carries one library object.
#pragma once

#include "python/frame/TypeTable.h"

#include <cstddef>

namespace Yul::python {

/// A pointer to a library object with its type and the question who frees it. `Class_method` functions accept
/// it wherever the object is wanted. Compares, hashes and converts to int as the pointer value.
struct PointerObject
{
    PyObject_HEAD    // the interpreter's fields
        void * live; ///< the object, or the list that holds it; null once it has been destroyed through this
    void * address;  ///< its place, kept for repr, int and comparison
    TypeRecord const * type; ///< of *live
    PointerObject * next;    ///< a further base view of the same Python object, or null
    PointerObject * owner; ///< whose part the object is; kept alive as long as this, null for a whole object
    PyObject * kept;       ///< a list of what the object refers to and does not own, or null
    void * (*locate)(void * list, int index); ///< finds an item of the list *live; null for other objects
    int index;                                ///< of that item
    std::size_t item_size;                    ///< octets of that item
    std::size_t offset;                       ///< where in the item the object begins: 0 for the item itself
    std::size_t extent; ///< number of plain values in the array that live points to; 0 where not known
    bool own;           ///< Python frees the object
    bool is_borrowed;   ///< handed out by the library, which frees it

    /// The object can still be used: neither it nor the one it is a part of has been destroyed.
    [[nodiscard]] bool isAlive() const noexcept
    {
        return live != nullptr && (owner == nullptr || owner->live != nullptr);
    }

    /// Where the object is now, while it is alive: a list that grows moves its items.
    [[nodiscard]] void * place() const
    {
        return locate == nullptr ? live : static_cast<std::byte *>(locate(live, index)) + offset;
    }
};

[[nodiscard]] inline bool isPointerObject(PyObject * object) noexcept
{
    return Py_TYPE(object) == pointer_type;
}

/// A PointerObject that owns what Python has just made.
[[nodiscard]] PyObject * newOwner(TypeRecord const & type, void * object);

/// A PointerObject for an object that the library owns. `part_of` is the PointerObject through which it was
/// reached, or null; it, or the whole that it is itself a part of, stays alive as long as the new one. A part that lies
/// within an item of a list is found again through the list, as the item is.
[[nodiscard]] PyObject *
newView(TypeRecord const & type, void * object, PointerObject * part_of, std::size_t extent = 0);

/// Appends a further base view at the end of the pointer's chain; -1 with an exception set when that would
/// close a ring.
[[nodiscard]] int appendView(PyObject * pointer, PyObject * added);

/// Keeps another PointerObject alive as long as this one's object; -1 with an exception set. Objects that keep
/// each other are never collected, only deleted.
[[nodiscard]] int keepAlive(PointerObject & pointer, PointerObject & other);

/// Destroys the object at once; afterwards the PointerObject owns nothing and its object is gone.
void destroy(PointerObject & pointer);

/// The type object; null with an exception set. Called once a process.
[[nodiscard]] PyTypeObject * makePointerType();

} // namespace Yul::python
