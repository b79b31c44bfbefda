#include "grid/ObjectAnal.h"

#include "core/Format.h"
#include "core/Scan.h"
#include "core/StrLib.h"
#include "core/Yul.h"
#include "grid/AnalSweep.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <limits>
#include <string_view>

namespace Yul {
namespace {

constexpr int PROGRESS = 8; // message level
constexpr float FILTER = 1;
constexpr float RAD_INF = 3;
constexpr float CONVERG = 0.2F;

/// Sets the five values in their order as far as the text goes; returns how many it holds.
int setAll(ObjectAnal & anal, std::string_view text, char const * format)
{
    float filter = 0;
    float rad_inf = 0;
    int pass = 0;
    float conv = 0;
    int min_sta = 0;
    int const count = detail::scan(text, format, &filter, &rad_inf, &pass, &conv, &min_sta);
    if (count > 0)
        anal.setFilter(filter);
    if (count > 1)
        anal.setRadInf(rad_inf);
    if (count > 2)
        anal.setNumPass(pass);
    if (count > 3)
        anal.setConverg(conv);
    if (count > 4)
        anal.setMinSta(min_sta);
    return count;
}

int setWithCommas(ObjectAnal & anal, std::string_view text)
{
    return setAll(anal, text, "%f,%f,%d,%f,%d");
}

// What follows the key and its separating character: up to the end of the item, and up to the end of the text.
struct Value
{
    std::string_view item, text;
};

template <int (ObjectAnal::*SET)(float)> int setReal(ObjectAnal & anal, Value const & value)
{
    float number = 0;
    return detail::scan(value.item, "%f", &number) == 1 ? (anal.*SET)(number) : 0;
}

template <int (ObjectAnal::*SET)(int)> int setInt(ObjectAnal & anal, Value const & value)
{
    int number = 0;
    return detail::scan(value.item, "%d", &number) == 1 ? (anal.*SET)(number) : 0;
}

int setAllOf(ObjectAnal & anal, Value const & value)
{
    int const count = setAll(anal, value.item, "%f:%f:%d:%f:%d");
    return count == 1 ? setWithCommas(anal, value.text) : std::min(count, 1);
}

/// Keys are compared with the beginning of an item. `set` returns how many items it has used up.
struct Key
{
    std::string_view name;
    int (*set)(ObjectAnal & anal, Value const & value);
};

constexpr Key KEYS[] = {
    {"filter", setReal<&ObjectAnal::setFilter>},
    {"rad_inf", setReal<&ObjectAnal::setRadInf>},
    {"pass", setInt<&ObjectAnal::setNumPass>},
    {"conv", setReal<&ObjectAnal::setConverg>},
    {"min_sta", setInt<&ObjectAnal::setMinSta>},
    {"miss", setReal<&ObjectAnal::setMissVal>},
    {"oa", setAllOf},
};

/// Sets what the first item of the text says; returns how many items that were, 0 for one that says nothing.
int setItem(ObjectAnal & anal, std::string_view text)
{
    auto const item = text.substr(0, text.find(','));
    for (auto const & key : KEYS)
        if (detail::startsIgnoringCase(item, key.name)) {
            auto const start = std::min(key.name.size() + 1, item.size());
            return key.set(anal, {item.substr(start), text.substr(start)});
        }
    return 0;
}

} // namespace

int ObjectAnal::init()
{
    filter = FILTER;
    rad_inf = RAD_INF;
    pass = 1;
    conv = CONVERG;
    miss = Const::MISS;
    min_sta = 1;
    auto const * const param = Yul::getResrc("object_param");
    if (param != nullptr)
        setParam(param);
    return 1;
}

int ObjectAnal::set(char const * text)
{
    if (setWithCommas(*this, detail::viewOf(text)) > 0)
        return 1;
    Yul::outWarning("ObjectAnal::set: Invalid parameters: %s\n", text != nullptr ? text : "");
    return 0;
}

int ObjectAnal::set(float filter_value, float rad_inf_value, int pass_value, float conv_value)
{
    if (setRadInf(rad_inf_value) == 0)
        return 0;
    setFilter(filter_value);
    setNumPass(pass_value);
    return setConverg(conv_value);
}

int ObjectAnal::setParam(char const * text)
{
    int result = 1;
    auto rest = detail::viewOf(text);
    while (!rest.empty()) {
        rest.remove_prefix(std::min(rest.find_first_not_of(" \t\r\n"), rest.size()));
        auto const item = rest.substr(0, rest.find(','));
        int const used = item.empty() ? 1 : setItem(*this, rest);
        if (used == 0) {
            std::string const shown(item);
            Yul::outWarning("ObjectAnal::setParam: Invalid parameter: %s\n", shown.c_str());
            result = 0;
        }
        for (int i = 0; i < std::max(used, 1); ++i)
            rest.remove_prefix(std::min(rest.find(','), rest.size() - 1) + 1);
    }
    return result;
}

int ObjectAnal::setFilter(float value)
{
    filter = value > 0 ? value : FILTER;
    return 1;
}

int ObjectAnal::setRadInf(float value)
{
    if (std::isnan(value))
        return 0;
    rad_inf = value;
    return 1;
}

int ObjectAnal::setNumPass(int value)
{
    pass = value;
    return 1;
}

int ObjectAnal::setConverg(float value)
{
    conv = value >= 0.01F && value < 1 ? value : CONVERG;
    return 1;
}

int ObjectAnal::setMinSta(int value)
{
    min_sta = std::max(value, 1);
    return 1;
}

int ObjectAnal::setMissVal(float value)
{
    if (!std::isfinite(value))
        return 0;
    miss = value;
    return 1;
}

int ObjectAnal::setDomain(Domain const & value)
{
    domain = value;
    return 1;
}

bool ObjectAnal::hasGrid() const
{
    Point corner;
    return domain.getNx() >= 1 && domain.getNy() >= 1 && domain.tran(GridPoint(0, 0), corner) == 1;
}

int ObjectAnal::compute(StationData const & data, Grids & grids)
{
    rms.clear();
    if (!hasGrid()) {
        Yul::outWarning("ObjectAnal::compute: The domain has no grid\n");
        return 0;
    }
    if (data.getFields() == 0) {
        Yul::outWarning("ObjectAnal::compute: The data have no fields\n");
        return 0;
    }
    try {
        if (prepare(data, grids) == 0)
            return 0;
        announce(data);
        analyse(data, grids);
    } catch (std::exception const &) {
        rms.clear();
        Yul::outWarning("ObjectAnal::compute: Not enough memory\n");
        return 0;
    }
    return 1;
}

/// Gives every field a grid of the domain; what stands in it is not defined yet.
int ObjectAnal::prepare(StationData const & data, Grids & grids) const
{
    // Beside the grids there are the sums of a sweep, at most six values for every grid point.
    double const needed = (data.getFields() + 6.0) * domain.getNx() * domain.getNy();
    if (needed > static_cast<double>(detail::GridData::most())) {
        Yul::outWarning("ObjectAnal::compute: Not enough memory for %d fields of %d x %d values\n",
                        data.getFields(), domain.getNx(), domain.getNy());
        return 0;
    }
    if (grids.getNum() < data.getFields() && grids.setNum(data.getFields()) == 0) {
        Yul::outWarning("ObjectAnal::compute: Not enough memory for %d grids\n", data.getFields());
        return 0;
    }
    for (int field = 0; field < data.getFields(); ++field) {
        auto & grid = grids.get(field);
        if (grid.prepareData(domain.getNx(), domain.getNy()) == nullptr)
            return 0;
        grid.setDomain(domain);
        if (*data.getName(field) != '\0')
            grid.setVar(data.getName(field));
    }
    return 1;
}

void ObjectAnal::announce(StationData const & data) const
{
    Yul::outMessage(PROGRESS, "Objective analysis\n");
    Yul::outMessage(PROGRESS, "Number of stations: %d\n", data.getNum());
    Yul::outMessage(PROGRESS, "Filter parameter: %.3f\n", static_cast<double>(filter));
    Yul::outMessage(PROGRESS, "Radius of influence: %.3f\n", static_cast<double>(rad_inf));
    Yul::outMessage(PROGRESS, "Number of passes: %d\n", pass);
    Yul::outMessage(PROGRESS, "Convergence factor: %.3f\n", static_cast<double>(conv));
    Yul::outMessage(PROGRESS, "Min stations per gridpoint: %d\n", min_sta);
    for (int field = 0; field < data.getFields(); ++field)
        Yul::outMessage(PROGRESS, "Data field: %s\n", data.getName(field));
}

namespace {

/// The fields as the sweeps take them, the value for missing ones put in.
std::vector<detail::AnalField>
fieldsOf(StationData const & data, Grids & grids, detail::AnalSweep const & sweep, float miss)
{
    std::vector<detail::AnalField> fields(static_cast<std::size_t>(data.getFields()));
    for (int i = 0; i < data.getFields(); ++i) {
        auto & field = fields[static_cast<std::size_t>(i)];
        field.grid = grids.get(i).data();
        field.values.reserve(sweep.stations().size());
        for (auto const & station : sweep.stations()) {
            float const given = data.getValue(station.index, i);
            float const value = detail::isMissing(given) ? miss : given;
            field.values.push_back(detail::isMissing(value) ? std::numeric_limits<double>::quiet_NaN()
                                                            : static_cast<double>(value));
        }
        field.residuals = field.values;
    }
    return fields;
}

void findResiduals(detail::AnalSweep const & sweep, std::vector<detail::AnalField> & fields, bool is_first)
{
    Yul::outMessage(PROGRESS, "Computing residuals...\n");
    int number = 0;
    for (auto & field : fields) {
        sweep.findResiduals(field);
        if (field.count == 0)
            Yul::outMessage(PROGRESS, "RMS Error for field %d: no stations\n", number);
        else if (is_first)
            Yul::outMessage(PROGRESS, "RMS Error for field %d: %f %d\n", number, field.rms, field.count);
        else
            Yul::outMessage(PROGRESS, "RMS Error for field %d: %f\n", number, field.rms);
        ++number;
    }
}

} // namespace

void ObjectAnal::analyse(StationData const & data, Grids & grids)
{
    constexpr double SHARPEST = std::numeric_limits<double>::min();
    GridPoints places;
    domain.tran(data.getLocations(), places);
    detail::AnalSweep sweep(places.all(), domain.getNx(), domain.getNy(), rad_inf, min_sta);
    auto fields = fieldsOf(data, grids, sweep, miss);
    double sharpened =
        std::clamp<double>(filter, SHARPEST, std::numeric_limits<float>::max()); // not infinite for ever
    sweep.analyse(fields, sharpened);
    findResiduals(sweep, fields, true);
    for (int made = 1; made < pass; ++made) {
        Yul::outMessage(PROGRESS, "Pass: %d...\n", made + 1);
        sharpened = std::max(sharpened * conv, SHARPEST);
        bool const has_changed = sweep.correct(fields, sharpened);
        findResiduals(sweep, fields, false);
        // From here on weights and residuals are the same in every pass.
        if (!has_changed && sharpened == SHARPEST && !Yul::checkMessage(PROGRESS))
            break;
    }
    rms.reserve(fields.size());
    for (auto const & field : fields)
        rms.push_back(field.count > 0 ? static_cast<float>(field.rms) : static_cast<float>(Const::MISS));
}

float ObjectAnal::getRms(int field) const noexcept
{
    return field >= 0 && static_cast<std::size_t>(field) < rms.size() ? rms[static_cast<std::size_t>(field)]
                                                                      : static_cast<float>(Const::MISS);
}

int ObjectAnal::print() const
{
    return Yul::print(detail::format("Filter parameter: %.3f\n"
                                     "Radius of influence: %.3f\n"
                                     "Number of passes: %d\n"
                                     "Convergence factor: %.3f\n"
                                     "Value for missing ones: %.3f\n"
                                     "Min stations per gridpoint: %d\n",
                                     static_cast<double>(filter), static_cast<double>(rad_inf), pass,
                                     static_cast<double>(conv), static_cast<double>(miss), min_sta)
                          .c_str());
}

} // namespace Yul
