// What a grid holds and when: its fields.
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/Grid.h"
#include "grid/Unit.h"

namespace Yul {

int Grid::setType(int value)
{
    type = value;
    return 1;
}

int Grid::setSource(int value)
{
    source = value;
    return 1;
}

int Grid::setVersion(int value)
{
    version = value;
    return 1;
}

int Grid::setModel(int value)
{
    model = value;
    return 1;
}

int Grid::setGenName(char const * text)
{
    gen_name = std::string(detail::viewOf(text));
    return 1;
}

int Grid::setDatim(char const * text)
{
    datim = std::string(detail::viewOf(text));
    return 1;
}

int Grid::setInfo(char const * text)
{
    info = std::string(detail::viewOf(text));
    return 1;
}

int Grid::setDate(Date const & value)
{
    date = value;
    return 1;
}

int Grid::setDate(DateVal const & value)
{
    return date.set(DateVal(value));
}

int Grid::getValidDate(Date & value) const
{
    auto const initial = date;
    value = Date();
    if (!initial.isSet())
        return 0;
    value = initial;
    auto const seconds = fore.getSeconds();
    return detail::isMissing(seconds) ? 1 : value.set(initial.getSeconds() + seconds);
}

int Grid::setDomain(Domain const & value)
{
    domain = value;
    forgetLocations();
    return 1;
}

int Grid::setDomain(DomainVal const & value)
{
    forgetLocations();
    return domain.set(value);
}

DomainVal const & Grid::getDomainVal() const
{
    return domain.get();
}

int Grid::getProj() const
{
    return domain.get().proj;
}

float Grid::getDx() const
{
    return domain.get().dx;
}

float Grid::getDy() const
{
    return domain.get().dy;
}

int Grid::setLevel(Level const & value)
{
    return level.set(value);
}

int Grid::setLevel(char const * text)
{
    return level.set(text);
}

int Grid::setForeTime(ForeTime const & value)
{
    fore = value;
    return 1;
}

int Grid::setForeTime(char const * text)
{
    return fore.set(text);
}

int Grid::getForeHours() const
{
    return fore.getFore();
}

long Grid::getForeSeconds() const
{
    return fore.getSeconds();
}

int Grid::setVar(Variable const & value)
{
    return var.set(value);
}

int Grid::setVar(char const * text)
{
    return var.set(text);
}

int Grid::setUnits(char const * text)
{
    std::string const units(detail::viewOf(text)); // a copy: the text may be the grid's own
    if (detail::trimmed(units).empty())
        return 0;
    auto const bracket = info.rfind('[');
    info = bracket == std::string::npos ? info + ' ' : info.substr(0, bracket);
    info += '[' + units + ']';
    return var.setUnits(units.c_str());
}

int Grid::convertUnits(char const * text)
{
    Unit const unit(var.getUnits(), text);
    if (!unit.isValid() || detail::trimmed(detail::viewOf(text)).empty()) {
        Yul::outWarning("Grid::convertUnits: No conversion from %s to %s\n", var.getUnits(),
                        text != nullptr ? text : "");
        return 0;
    }
    for (auto & value : getValues())
        value = unit.convert(value);
    return setUnits(text);
}

GridSpec Grid::getSpec() const
{
    GridSpec spec;
    spec.setVar(var);
    spec.setLevel(level);
    spec.setForeTime(fore);
    if (source != 0 || model != 0)
        spec.setModel(ModelSpec(source, model));
    return spec;
}

bool Grid::meets(GridSpec const & spec) const
{
    auto own = getSpec();
    if (spec.match(own))
        return true;
    if (fore.getType() != ForeTime::ANAL || fore.getSeconds() != 0)
        return false;
    own.setForeTime(ForeTime(0));
    return spec.match(own);
}

} // namespace Yul
