// The linked global variables behind the module attribute `cvar`.
#pragma once

#include "python/frame/Member.h"

#include <string>
#include <vector>

namespace Yul::python {

/// One linked variable.
struct Variable
{
    std::string name;      ///< "Const_MISS"
    std::string full_name; ///< "Yul::Const::MISS", in the texts of errors
    void const * place = nullptr;
    PyObject * (*get)(Variable const & variable) = nullptr;
    int (*set)(Variable const & variable, PyObject * value) = nullptr; ///< null for a read-only variable
    std::string (*type_name)() = nullptr;
};

/// The row of a variable of type M.
template <class M> [[nodiscard]] Variable variableOf(std::string name, std::string full_name, M * place)
{
    using Written = Parameter<typename Access<M>::Written>;
    prepareResult<typename Access<M>::Result>();
    Variable row{std::move(name), std::move(full_name), place, nullptr, nullptr, &Written::name};
    row.get = [](Variable const & variable) {
        auto & target = *static_cast<M *>(const_cast<void *>(variable.place));
        return toPython<typename Access<M>::Result>(Access<M>::read(target), Source{});
    };
    if constexpr (IS_WRITABLE<M>) {
        if (Written::RECORD != nullptr)
            Written::RECORD();
        row.set = [](Variable const & variable, PyObject * value) {
            Written converter;
            if (Fault const fault = converter.load(value); fault != Fault::NONE)
                return raiseVariable(fault, variable.full_name, variable.type_name());
            Access<M>::write(*static_cast<M *>(const_cast<void *>(variable.place)), converter.get());
            return 0;
        };
    }
    return row;
}

/// The object that Python sees as `cvar`; the variables stay where they are as long as it lives. Null with an
/// exception set.
[[nodiscard]] PyObject * newVarLink(std::vector<Variable> const & variables);

} // namespace Yul::python
