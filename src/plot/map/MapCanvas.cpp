// What lines and areas share: how finely the frame is drawn.
#include "plot/map/MapCanvas.h"

#include <algorithm>
#include <cmath>

namespace Yul::detail {
namespace {

constexpr double COARSEST = 2.5; // degrees
constexpr double FINEST = 0.02;
constexpr double MOST_PARTS = 64; // of a segment; the pen looks at those more closely that are still long
constexpr double ROUND = 57.3;    // degrees in the radius of the earth
constexpr double BEND = 4;        // how much more than a great circle a line may be bent

/// A segment that is straight on the plane but bent on the earth leaves its place by length^2 / (8 radius); it may by
/// a dot.
double finestStep(double degrees_a_dot)
{
    double const length = std::sqrt(8 * ROUND * degrees_a_dot / BEND);
    return std::isfinite(length) ? std::clamp(length, FINEST, COARSEST) : COARSEST;
}

/// Adds points between the last one and the next where they are more than a step apart.
void addBetween(double lat, double lon, double step, MapLines & dense)
{
    double const from_lat = dense.lat.back();
    double const from_lon = dense.lon.back();
    double const d_lat = lat - from_lat;
    double const d_lon = lon - from_lon;
    double const longest = std::max(std::fabs(d_lat), std::fabs(d_lon));
    if (longest <= step)
        return;
    int const parts = static_cast<int>(std::min(std::ceil(longest / step), MOST_PARTS));
    for (int k = 1; k < parts; ++k) {
        dense.lat.push_back(from_lat + d_lat * k / parts);
        dense.lon.push_back(from_lon + d_lon * k / parts);
    }
}

} // namespace

MapCanvas::MapCanvas(Domain const & domain, Rect const & frame, double dot_size, Graph & to)
    : map(domain, frame), edge(frame), dot(dot_size), step(finestStep(map.degreesPerUnit() * dot_size)),
      graph(to)
{
    shifts = {0};
    if (map.turn() > 0 && static_cast<double>(frame.getWidth()) > map.turn())
        shifts = {-map.turn(), 0, map.turn()};
}

void densify(MapLines const & lines, std::size_t & next, double step, bool is_closed, MapLines & dense)
{
    constexpr std::size_t ENOUGH = 1U << 16U; // points at a time
    dense.lat.clear();
    dense.lon.clear();
    dense.pieces.clear();
    for (; next < lines.pieces.size() && dense.lat.size() < ENOUGH; ++next) {
        MapLines::Piece const & piece = lines.pieces[next];
        MapLines::Piece out = piece;
        out.begin = dense.lat.size();
        double turn = 0; // added to longitudes
        for (std::size_t i = piece.begin; i < piece.end + (is_closed ? 1 : 0); ++i) {
            std::size_t const at = i < piece.end ? i : piece.begin;
            double const lat = lines.lat[at];
            double lon = lines.lon[at] + turn;
            if (i > piece.begin) {
                double const jump = lon - dense.lon.back();
                if (std::fabs(jump) > 180) {
                    turn -= 360 * std::nearbyint(jump / 360);
                    lon = lines.lon[at] + turn;
                }
                addBetween(lat, lon, step, dense);
            }
            dense.lat.push_back(lat);
            dense.lon.push_back(lon);
        }
        out.end = dense.lat.size();
        dense.pieces.push_back(out);
    }
}

} // namespace Yul::detail
