// The table of library types that pass the boundary behind a pointer.
#pragma once

#include "python/frame/Api.h"
#include "python/frame/TypeName.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace Yul::python {

struct TypeRecord;

/// One step up the class tree.
struct BaseStep
{
    TypeRecord * base;
    void * (*adjust)(void * derived);
};

/// What the frame knows of one pointed-to type.
struct TypeRecord
{
    std::string name; ///< of the pointer, "Yul::Grid *"
    std::vector<BaseStep> bases;
    void (*destroy)(void * object) = nullptr; ///< the destructor, for classes that are bound
    PyTypeObject * proxy = nullptr;           ///< the Python class that wraps results, once it is registered
};

/// What all modules built on the frame share in one process: the two opaque kinds and the types by name.
struct Runtime
{
    PyTypeObject * pointer_type = nullptr;
    PyTypeObject * packed_type = nullptr;
    std::map<std::string, std::unique_ptr<TypeRecord>, std::less<>> types;
};

/// The two opaque kinds, null before the first module of the process is made.
extern PyTypeObject * pointer_type;
extern PyTypeObject * packed_type;

/// Joins the process's runtime, making it when this is the first module; false with an exception set.
[[nodiscard]] bool joinRuntime();

/// The record of a pointer type by its name, made when it is new.
[[nodiscard]] TypeRecord & findRecord(std::string const & name);

/// True when `pointer`, which points to a `from`, can stand for a `to`; it is adjusted along the class tree.
[[nodiscard]] bool adjustPointer(TypeRecord const & from, TypeRecord const & to, void *& pointer);

/// Adds a step up the class tree, once.
void addBase(TypeRecord & derived, BaseStep step);

template <class T> void destroyObject(void * object)
{
    std::unique_ptr<T> const last(static_cast<T *>(object));
}

/// The record of T, for class types without const. Null until some bound operation has named the type.
template <class T> inline TypeRecord * record_of = nullptr;

/// Classes are the same type with and without const; plain values are not.
template <class T>
using Pointee = std::conditional_t<std::is_class_v<std::remove_cv_t<T>>, std::remove_cv_t<T>, T>;

/// Makes sure that record_of<T> is there. A pointer to plain values also serves where one to constant values
/// is wanted.
template <class T> TypeRecord & recordOf()
{
    if (record_of<T> == nullptr) {
        record_of<T> = &findRecord(typeName<T *>());
        if constexpr (!std::is_class_v<T> && !std::is_const_v<T>)
            record_of<T>->bases.push_back({&recordOf<T const>(), [](void * p) { return p; }});
    }
    return *record_of<T>;
}

} // namespace Yul::python
