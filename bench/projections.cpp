// Projections of a million positions through the list forms, beside PROJ's proj_trans_generic.
//
// Both sides project the same random positions; ours are floats in EarthPoints and Points (degrees, units of
// 100 km), the peer's are doubles (radians, metres). The results are compared before the clock starts. Each figure
// is the median of runs in turns. The single-point row calls Domain::tran once for every position.
#include "Interleaved.h"
#include "geo/Domain.h"

#if __has_include(<proj.h>)
#include <proj.h>
#define HAS_PROJ 1
#endif

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace Yul;

namespace {

constexpr std::size_t POINTS = 1'000'000;
constexpr int ROUNDS = 7;
constexpr double METRES = 1e5; // in a unit of 100 km

struct Job
{
    char const * name;
    char const * domain;
    char const * peer;
    float south, north, west, east;
    double forward_limit, inverse_limit;
    double unit; ///< metres in a unit of the plane
};

constexpr double HEIGHT = 421.64e5 - 6371220; // of the satellite

constexpr Job JOBS[] = {
    {"pstereo", "ps:90:-95:60,60,-95,2,2,1", "+proj=stere +lat_0=90 +lat_ts=60 +lon_0=-95 +R=6371220", 15, 80,
     -150, -40, 8, 12, METRES},
    {"lamb", "lamb:40:-95:30:60,40,-95,2,2,1",
     "+proj=lcc +lat_1=30 +lat_2=60 +lat_0=90 +lon_0=-95 +R=6371220", 15, 75, -150, -40, 8, 12, METRES},
    {"merc", "merc,0,0,2,2,1", "+proj=merc +lon_0=0 +R=6371220", -75, 75, -179, 179, 6, 6, METRES},
    {"lambaz", "lambaz:45:-95,45,-95,2,2,1", "+proj=laea +lat_0=45 +lon_0=-95 +R=6371220", 5, 80, -150, -40,
     6, 6, METRES},
    {"albers", "albers:40:-95:30:60,40,-95,2,2,1",
     "+proj=aea +lat_1=30 +lat_2=60 +lat_0=40 +lon_0=-95 +R=6371220", 15, 75, -150, -40, 6, 6, METRES},
    {"sat", "sat,0,0,2,2,.001", "+proj=geos +h=35792780 +lon_0=0 +R=6371220", -55, 55, -55, 55, 6, 6, HEIGHT},
    {"ortho", "ortho:45:-95,45,-95,2,2,1", "+proj=ortho +lat_0=45 +lon_0=-95 +R=6371220", 15, 75, -135, -55,
     6, 6, METRES},
    {"gnom", "gnom:45:-95,45,-95,2,2,1", "+proj=gnom +lat_0=45 +lon_0=-95 +R=6371220", 20, 70, -125, -65, 6,
     6, METRES},
    {"moll", "moll,0,0,2,2,1", "+proj=moll +lon_0=0 +R=6371220", -85, 85, -179, 179, 6, 6, METRES},
};

#ifdef HAS_PROJ

/// The peer's side of a job: positions and their images as it keeps them, and room to work in, for it works in place.
class Peer
{
public:
    Peer(PJ_CONTEXT * context, Job const & job, EarthPoints const & earth)
        : projection(proj_create(context, job.peer)), lon(POINTS), lat(POINTS)
    {
        double const radian = std::acos(-1.0) / 180;
        for (std::size_t i = 0; i < POINTS; ++i) {
            lat[i] = static_cast<double>(earth.all()[i].lat) * radian;
            lon[i] = static_cast<double>(earth.all()[i].lon) * radian;
        }
    }

    ~Peer() { proj_destroy(projection); }

    Peer(Peer const &) = delete;
    Peer & operator=(Peer const &) = delete;

    [[nodiscard]] bool isSet() const { return projection != nullptr; }

    void forward() { trans(PJ_FWD, lon, lat); }

    void inverse() { trans(PJ_INV, x, y); }

    void keepImages()
    {
        forward();
        x = a;
        y = b;
    }

    std::vector<double> x, y;

private:
    void trans(PJ_DIRECTION direction, std::vector<double> const & u, std::vector<double> const & v)
    {
        a = u;
        b = v;
        proj_trans_generic(projection, direction, a.data(), 8, POINTS, b.data(), 8, POINTS, nullptr, 0, 0,
                           nullptr, 0, 0);
    }

    PJ * projection;
    std::vector<double> lon, lat, a, b;
};

EarthPoints randomPositions(Job const & job)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> lats(job.south, job.north);
    std::uniform_real_distribution<float> lons(job.west, job.east);
    EarthPoints earth;
    for (std::size_t i = 0; i < POINTS; ++i) {
        float const lat = lats(random);
        earth.add(EarthPoint(lat, lons(random)));
    }
    return earth;
}

/// Whether our images are the peer's but for a common offset of rounding in y.
bool areSame(Job const & job, Points const & points, Peer const & peer)
{
    double extent = 0;
    double worst = 0;
    for (std::size_t i = 0; i < POINTS; ++i)
        extent = std::max({extent, std::fabs(peer.x[i]), std::fabs(peer.y[i])});
    double const shift = peer.y[0] - static_cast<double>(points.all()[0].y) * job.unit;
    for (std::size_t i = 0; i < POINTS; ++i)
        worst = std::max({worst, std::fabs(peer.x[i] - static_cast<double>(points.all()[i].x) * job.unit),
                          std::fabs(peer.y[i] - shift - static_cast<double>(points.all()[i].y) * job.unit)});
    if (worst <= 2e-6 * extent && std::fabs(shift) <= 2e-6 * extent)
        return true;
    std::printf("# projections: %s differs from PROJ by %g of %g m, offset %g\n", job.name, worst, extent,
                shift);
    return false;
}

bool run(PJ_CONTEXT * context, Job const & job)
{
    EarthPoints const earth = randomPositions(job);
    Domain const domain(job.domain);
    Peer peer(context, job, earth);
    Points points;
    EarthPoints back;
    if (!peer.isSet() || domain.isMiss() || domain.tran(earth, points) == 0 ||
        domain.tran(points, back) == 0) {
        std::printf("# projections: %s cannot be set up\n", job.name);
        return false;
    }
    peer.keepImages();
    if (!areSame(job, points, peer))
        return false;
    Point point;
    auto const alone = [&] {
        for (auto const & position : earth.all())
            domain.tran(position, point);
    };
    std::vector<std::function<void()>> const works{
        [&] { domain.tran(earth, points); }, [&] { peer.forward(); }, [&] { domain.tran(points, back); },
        [&] { peer.inverse(); }, alone};
    auto const times = bench::medians(ROUNDS, works);
    std::string const name = std::string("projection ") + job.name;
    bench::printRow(name + " forward", "PROJ", times[0], times[1], POINTS, job.forward_limit);
    bench::printRow(name + " inverse", "PROJ", times[2], times[3], POINTS, job.inverse_limit);
    bench::printRow(name + " single point", "PROJ", times[4], times[1], POINTS, 2);
    return true;
}

int projectByPeer()
{
    constexpr Job const & JOB = JOBS[1]; // Lambert conformal
    std::vector<double> lon(POINTS), lat(POINTS);
    for (std::size_t i = 0; i < POINTS; ++i) {
        lat[i] = 0.3 + static_cast<double>(i % 600) / 600;
        lon[i] = -2.6 + static_cast<double>(i) / 1e6;
    }
    PJ_CONTEXT * const context = proj_context_create();
    PJ * const peer = proj_create(context, JOB.peer);
    std::size_t const count = proj_trans_generic(peer, PJ_FWD, lon.data(), 8, POINTS, lat.data(), 8, POINTS,
                                                 nullptr, 0, 0, nullptr, 0, 0);
    proj_destroy(peer);
    proj_context_destroy(context);
    return count == POINTS ? 0 : 1;
}

#endif

} // namespace

/// projections         measures
/// projections PROJ    lets PROJ project as many points forward, for bench/memory.py
int main(int argc, char **)
{
#ifdef HAS_PROJ
    if (argc > 1)
        return projectByPeer();
    PJ_CONTEXT * const context = proj_context_create();
    std::printf("# projections: %zu random positions; PROJ %d.%d.%d, proj_trans_generic\n", POINTS,
                PROJ_VERSION_MAJOR, PROJ_VERSION_MINOR, PROJ_VERSION_PATCH);
    bool good = true;
    for (Job const & job : JOBS)
        good = run(context, job) && good;
    proj_context_destroy(context);
    return good ? 0 : 1;
#else
    (void)JOBS;
    std::printf("# projections: PROJ is not installed (libproj-dev)\n");
    return argc == 1 ? 0 : 1;
#endif
}
