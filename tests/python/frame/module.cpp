// A module of classes that exist to show the frame: every kind of parameter, result, member and ownership.
#include "python/frame/Class.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <numeric>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace frametest {

/// Counts its objects.
struct Thing
{
    Thing() { ++made; }

    explicit Thing(int n) : number(n) { ++made; }

    Thing(Thing const & other) : number(other.number) { ++made; }

    Thing & operator=(Thing const &) = default;

    ~Thing() { ++gone; }

    Thing & operator+=(int n)
    {
        number += n;
        return *this;
    }

    bool operator<(Thing const & other) const { return number < other.number; }

    bool operator>(Thing const & other) const { return number > other.number; }

    [[nodiscard]] int getNumber() const noexcept { return number; }

    int print() const { return number; }

    Thing & self() { return *this; }

    Thing copy() const { return *this; }

    int number = 0;

    static inline int made = 0;
    static inline int gone = 0;
};

template <class T> struct ListOf
{
    int add(T const & item)
    {
        items.push_back(std::make_unique<T>(item));
        return 1;
    }

    T * get(int i)
    {
        return i >= 0 && i < static_cast<int>(items.size()) ? items[static_cast<std::size_t>(i)].get()
                                                            : nullptr;
    }

    std::vector<std::unique_ptr<T>> items;
};

struct Things : ListOf<Thing>
{
    int refer(Thing * thing)
    {
        referred = thing;
        return 1;
    }

    [[nodiscard]] int getReferred() const { return referred != nullptr ? referred->number : -1; }

    Thing * referred = nullptr;
};

struct Left
{
    virtual ~Left() = default;

    int left = 1;
};

struct Right
{
    virtual ~Right() = default;

    int right = 2;
};

struct Both : Left, Right
{
    int both = 3;
};

struct More : Both
{
    int more = 4;
};

struct Tree
{
    static int readLeft(Left const & object) { return object.left; }

    static int readRight(Right * object) { return object != nullptr ? object->right : 0; }

    static int readBoth(Both both) { return both.both; }

    static Right & asRight(Both & object) { return object; }
};

enum Color : int { RED = 1, BLUE = 2 };

/// One operation a row of the conversion table.
struct Rows
{
    int takeInt(int v) { return v; }

    short takeShort(short v) { return v; }

    unsigned short takeUnsignedShort(unsigned short v) { return v; }

    unsigned takeUnsigned(unsigned v) { return v; }

    long takeLong(long v) { return v; }

    unsigned long takeUnsignedLong(unsigned long v) { return v; }

    float takeFloat(float v) { return v; }

    double takeDouble(double v) { return v; }

    float takeFloatConstReference(float const & v) { return v; }

    bool takeBool(bool v) { return v; }

    char takeChar(char v) { return v; }

    Color takeEnum(Color v) { return v; }

    char const * takeText(char const * v) { return v; }

    int changeBuffer(char * v)
    {
        if (v != nullptr)
            *v = 'X';
        return v != nullptr ? static_cast<int>(std::strlen(v)) : -1;
    }

    std::string takeString(std::string const & v) { return v; }

    int takePointer(Thing * v) { return v != nullptr ? v->number : -1; }

    int takeReference(Thing const & v) { return v.number; }

    int takeValue(Thing v) { return v.number; }

    int & intReference() { return number; }

    float * floatPointer() { return values; }

    float const * constFloatPointer() { return values; }

    unsigned short & shortReference() { return small; }

    void const * address() { return this; }

    char const ** texts() { return names; }

    int takeIntReference(int & v) { return ++v; }

    float takeFloatPointer(float * v) { return v[1]; }

    float takeConstFloatPointer(float const * v) { return v[1]; }

    int takeShortReference(unsigned short & v) { return v; }

    int takeAddress(void const * v) { return v == this ? 1 : 0; }

    char const * takeTexts(char const * v[]) { return v[1]; }

    Thing * nothing() { return nullptr; }

    char const * badText() { return "\xff\xe9ok"; }

    int format(char const * text, ...)
    {
        std::va_list list;
        va_start(list, text);
        bool const is_null = va_arg(list, void *) == nullptr;
        va_end(list);
        return is_null ? static_cast<int>(std::strlen(text)) : -1;
    }

    void fail() { throw std::runtime_error("the operation failed"); }

    void failMemory() { throw std::bad_alloc(); }

    using Operation = int (Thing::*)() const;

    Operation operation() { return &Thing::getNumber; }

    int apply(Operation operation, Thing const & thing) { return (thing.*operation)(); }

    int number = 7;
    float values[3] = {1, 2, 3};
    unsigned short small = 5;
    char const * names[2] = {"one", "two"};
};

/// Overloads, declared in another order than they are tried in.
struct Picks
{
    char const * pick(char const *) { return "text"; }

    char const * pick(double) { return "double"; }

    char const * pick(int) { return "int"; }

    char const * pick(Left const &) { return "Left"; }

    char const * pick(Both const &) { return "Both"; }

    char const * pick(bool) { return "bool"; }

    char const * pick(Thing *) { return "Thing"; }

    char const * pick(float) { return "float"; }

    char const * pick() const { return "nothing"; }

    char const * pick(int, float) { return "int float"; }

    char const * pick(int, int) { return "int int"; }

    char const * pick(float, char const *) { return "float text"; }

    char const * pick(int, char const *) { return "int text"; }
};

struct Members
{
    int whole = 1;
    int const fixed = 2;
    float part = 0.5F;
    bool flag = false;
    char letter = 'a';
    char code[5] = "abcd";
    double table[4] = {1, 2, 3, 4};
    Thing thing{10};
    Thing * link = &thing;
    Thing pair[2];
    std::string text = "text";
    char const * label = "label";
    Color color = RED;
};

struct Globals
{
    static inline int table[13] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    static inline int other[13] = {};
    static inline int few[2] = {};
    static inline double radius = 2.5;
    static inline float offset = 0.5F;
    static inline int const LIMIT = 99;

    static int at(int const * values, int i) { return values[i]; }
};

struct Field
{
    Field(int columns, int rows)
        : nx(columns), ny(rows),
          values(std::make_shared<std::vector<float>>(static_cast<std::size_t>(columns * rows)))
    {
    }

    float get(int i, int j) const { return (*values)[static_cast<std::size_t>(j * nx + i)]; }

    /// Doubles as many values as both arrays have; returns their number.
    template <class Real> static std::size_t twice(std::span<Real const> in, std::span<Real> out)
    {
        std::size_t const count = std::min(in.size(), out.size());
        for (std::size_t i = 0; i < count; ++i)
            out[i] = 2 * in[i];
        return count;
    }

    int nx;
    int ny;
    std::shared_ptr<std::vector<float>> values;
};

} // namespace frametest

namespace Yul::python {
namespace {

using namespace frametest;

void bindThings(Module & m)
{
    Class<Thing>(m, "Thing")
        .constructor<>()
        .constructor<int>()
        .constructor<Thing const &>()
        .method("getNumber", &Thing::getNumber)
        .method("self", &Thing::self)
        .method("copy", &Thing::copy)
        .method("twice", [](Thing const & thing) { return 2 * thing.number; })
        .compare()
        .addAssign<int>()
        .print(&Thing::print)
        .member("number", &Thing::number)
        .staticMethod("count", [] { return Thing::made - Thing::gone; });
    Class<Things>(m, "Things")
        .constructor<>()
        .method("add", &Things::add)
        .keeping("refer", &Things::refer)
        .method("getReferred", &Things::getReferred)
        .method("get", &Things::get, [](Things & list) { return list.get(0); });
    Class<Left>(m, "Left").constructor<>().member("left", &Left::left);
    Class<Right>(m, "Right").constructor<>().member("right", &Right::right);
    Class<Both>(m, "Both").base<Left>().base<Right>().constructor<>().member("right", &Both::right);
    Class<More>(m, "More").base<Both>().constructor<>();
    Class<Tree>(m, "Tree")
        .staticMethod("readLeft", &Tree::readLeft)
        .staticMethod("readRight", &Tree::readRight)
        .staticMethod("readBoth", &Tree::readBoth)
        .staticMethod("asRight", &Tree::asRight);
}

void bindRows(Module & m)
{
    Class<Rows>(m, "Rows")
        .constructor<>()
        .constant("RED", RED)
        .constants({
            {"BLUE", BLUE},
            {"FAR", -9999},
        })
        .method("takeInt", &Rows::takeInt)
        .method("takeShort", &Rows::takeShort)
        .method("takeUnsignedShort", &Rows::takeUnsignedShort)
        .method("takeUnsigned", &Rows::takeUnsigned)
        .method("takeLong", &Rows::takeLong)
        .method("takeUnsignedLong", &Rows::takeUnsignedLong)
        .method("takeFloat", &Rows::takeFloat)
        .method("takeDouble", &Rows::takeDouble)
        .method("takeFloatConstReference", &Rows::takeFloatConstReference)
        .method("takeBool", &Rows::takeBool)
        .method("takeChar", &Rows::takeChar)
        .method("takeEnum", &Rows::takeEnum)
        .method("takeText", &Rows::takeText)
        .method("changeBuffer", &Rows::changeBuffer)
        .method("takeString", &Rows::takeString)
        .method("takePointer", &Rows::takePointer)
        .method("takeReference", &Rows::takeReference)
        .method("takeValue", &Rows::takeValue)
        .method("intReference", &Rows::intReference)
        .method("floatPointer", &Rows::floatPointer)
        .method("constFloatPointer", &Rows::constFloatPointer)
        .method("shortReference", &Rows::shortReference)
        .method("address", &Rows::address)
        .method("texts", &Rows::texts)
        .method("takeIntReference", &Rows::takeIntReference)
        .method("takeFloatPointer", &Rows::takeFloatPointer)
        .method("takeConstFloatPointer", &Rows::takeConstFloatPointer)
        .method("takeShortReference", &Rows::takeShortReference)
        .method("takeAddress", &Rows::takeAddress)
        .method("takeTexts", &Rows::takeTexts)
        .method("nothing", &Rows::nothing)
        .method("badText", &Rows::badText)
        .method("format", &Rows::format)
        .method("fail", &Rows::fail)
        .method("failMemory", &Rows::failMemory)
        .method("operation", &Rows::operation)
        .method("apply", &Rows::apply);
}

void bindPicks(Module & m)
{
    Class<Picks>(m, "Picks")
        .constructor<>()
        .method("pick", overload<char const *(char const *)>(&Picks::pick),
                overload<char const *(double)>(&Picks::pick), overload<char const *(int)>(&Picks::pick),
                overload<char const *(Left const &)>(&Picks::pick),
                overload<char const *(Both const &)>(&Picks::pick),
                overload<char const *(bool)>(&Picks::pick), overload<char const *(Thing *)>(&Picks::pick),
                overload<char const *(float)>(&Picks::pick), overload<char const *() const>(&Picks::pick),
                overload<char const *(int, float)>(&Picks::pick),
                overload<char const *(int, int)>(&Picks::pick),
                overload<char const *(float, char const *)>(&Picks::pick),
                overload<char const *(int, char const *)>(&Picks::pick));
}

void bindMembers(Module & m)
{
    Class<Members>(m, "Members")
        .constructor<>()
        .member("whole", &Members::whole)
        .member("fixed", &Members::fixed)
        .member("part", &Members::part)
        .member("flag", &Members::flag)
        .member("letter", &Members::letter)
        .member("code", &Members::code)
        .member("table", &Members::table)
        .member("thing", &Members::thing)
        .member("link", &Members::link)
        .member("pair", &Members::pair)
        .member("text", &Members::text)
        .member("label", &Members::label)
        .member("color", &Members::color);
    Class<Globals>(m, "Globals")
        .variable("table", &Globals::table)
        .variable("other", &Globals::other)
        .variable("few", &Globals::few)
        .variable("radius", &Globals::radius)
        .variable("offset", &Globals::offset)
        .variable("LIMIT", &Globals::LIMIT)
        .staticMethod("at", &Globals::at);
    Class<Field>(m, "Field")
        .constructor<int, int>()
        .method("get", &Field::get)
        .property(
            "columns", [](Field const & field) { return field.nx; },
            [](Field & field, int n) { field.nx = n; })
        .readOnly("rows", [](Field const & field) { return field.ny; })
        .staticMethod("twice", &Field::twice<float>, &Field::twice<double>)
        .staticMethod("sum",
                      [](std::span<double const> in) { return std::accumulate(in.begin(), in.end(), 0.0); })
        .method("view", [](Field & field) {
            return ArrayView{{field.values, field.values->data()}, "f", sizeof(float), {field.ny, field.nx}};
        });
}

constexpr Module::Binder BINDERS[] = {bindThings, bindRows, nullptr, bindPicks, bindMembers};

} // namespace
} // namespace Yul::python

PyMODINIT_FUNC PyInit__frametest()
{
    return Yul::python::Module::make("_frametest", "classes for the tests", Yul::python::BINDERS);
}
