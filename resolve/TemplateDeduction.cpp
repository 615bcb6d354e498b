#include "resolve/TemplateDeduction.h"

#include <algorithm>

namespace resolve {

namespace {

// Binds "T" where a parameter is a "const Box<T>&" and what is passed a "Box<Shape>".
void Deduce(const Type& parameter, const Type& passed, const std::vector<std::string>& names, Bindings* bindings)
{
    if (!parameter.IsKnown() || !passed.IsKnown())
        return;
    if (std::find(names.begin(), names.end(), parameter.name) != names.end()) {
        Type bound = passed;
        bound.pointers = std::max(0, bound.pointers - parameter.pointers);
        bindings->emplace_back(parameter.name, bound);
        return;
    }
    for (size_t i = 0; i < parameter.arguments.size() && i < passed.arguments.size(); ++i)
        Deduce(parameter.arguments[i], passed.arguments[i], names, bindings);
}

} // namespace

Bindings DeducedFor(const Symbol& function, const std::vector<Type>& written, const std::vector<Type>& passed)
{
    Bindings bindings;
    const std::vector<std::string> names = TemplateParameterNames(function.templateParameters);
    for (size_t i = 0; i < names.size() && i < written.size(); ++i)
        bindings.emplace_back(names[i], written[i]);
    if (passed.empty())
        return bindings;
    const std::vector<Type> parameters = ParameterTypes(function.signature);
    for (size_t i = 0; i < parameters.size() && i < passed.size(); ++i)
        Deduce(parameters[i], passed[i], names, &bindings);
    return bindings;
}

} // namespace resolve
