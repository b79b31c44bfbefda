// Domain texts.
#pragma once

#include "core/Strings.h"
#include "geo/DomainVal.h"

namespace Yul {

class Domain;

/// Turns domain texts into domains.
///
/// A domain is written as comma-separated fields: "projection,clat,clon,nx,ny,dx,dy" and shorter forms of it,
/// or the name of a region. The projection field is itself separated by colons: a keyword (Domain::getProj),
/// then optionally "e" for the ellipsoid, then optionally reference latitude, reference longitude and up to
/// four parameters; a single number is the reference longitude. "docs/projections.md" lists all forms.
class DomainTool
{
public:
    /// The code of a projection keyword, as Domain::getProj gives it.
    [[nodiscard]] static int proj(char const * name);

    /// Sets one field of the record from its text.
    /// key     "proj", "plon", "clat", "clon", "nx", "ny", "dx", "dy" or "id" (a station, which sets the
    ///         centre)
    /// return  0 when the key is none of these or the text is not a value for it; the record then keeps its
    ///         values. Numbers must fill the whole text and differ from -9999. Warns when a station is not
    ///         found.
    static int setParam(DomainVal & val, char const * value, char const * key);

    /// Sets the fields of the comma-separated key template `keys` from as many values; returns 0 and leaves
    /// the record as it was when the numbers differ or one of them is refused.
    static int setParams(DomainVal & val, Strings const & values, char const * keys);

    /// Reads a domain text. Fields that the text does not give keep the values that the record holds; an
    /// empty text and "miss" clear it.
    /// region_file  where a region is looked up that the database's "yul.reg" does not have; null for nowhere
    /// return       0 with a warning when the text cannot be read; the record is missing then
    static int decode(char const * text, DomainVal & val, char const * region_file = nullptr);
    /// The same, into a domain that is ready for conversions.
    static int decode(char const * text, Domain & domain, char const * region_file = nullptr);

    static int set(Domain & domain, char const * text); ///< the same as `decode`
    /// From the resource "plot_domain".
    static int set(Domain & domain);
};

} // namespace Yul
