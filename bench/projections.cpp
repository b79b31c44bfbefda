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

bool run(PJ_CONTEXT * context, Job const & job)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<float> lats(job.south, job.north);
    std::uniform_real_distribution<float> lons(job.west, job.east);
    EarthPoints earth;
    for (std::size_t i = 0; i < POINTS; ++i)
        earth.add(EarthPoint(lats(random), lons(random)));
    Domain const domain(job.domain);
    PJ * const peer = proj_create(context, job.peer);
    if (peer == nullptr || domain.isMiss()) {
        std::printf("# projections: %s cannot be set up\n", job.name);
        return false;
    }
    std::vector<double> lon(POINTS), lat(POINTS), x(POINTS), y(POINTS), a(POINTS), b(POINTS);
    double const radian = std::acos(-1.0) / 180;
    for (std::size_t i = 0; i < POINTS; ++i) {
        lat[i] = static_cast<double>(earth.all()[i].lat) * radian;
        lon[i] = static_cast<double>(earth.all()[i].lon) * radian;
    }
    auto const trans = [&](PJ_DIRECTION direction, std::vector<double> const & u,
                           std::vector<double> const & v) {
        a = u; // the peer works in place
        b = v;
        proj_trans_generic(peer, direction, a.data(), 8, POINTS, b.data(), 8, POINTS, nullptr, 0, 0, nullptr,
                           0, 0);
    };
    Points points;
    EarthPoints back;
    trans(PJ_FWD, lon, lat);
    x = a;
    y = b;
    bool const all = domain.tran(earth, points) != 0 && domain.tran(points, back) != 0;
    double extent = 0;
    double worst = 0;
    double shift = 0;
    for (std::size_t i = 0; i < POINTS; ++i)
        extent = std::max({extent, std::fabs(x[i]), std::fabs(y[i])});
    shift = y[0] - static_cast<double>(points.all()[0].y) * job.unit;
    for (std::size_t i = 0; i < POINTS; ++i)
        worst = std::max({worst, std::fabs(x[i] - static_cast<double>(points.all()[i].x) * job.unit),
                          std::fabs(y[i] - shift - static_cast<double>(points.all()[i].y) * job.unit)});
    if (!all || worst > 2e-6 * extent || std::fabs(shift) > 2e-6 * extent) {
        std::printf("# projections: %s differs from PROJ by %g of %g m, offset %g\n", job.name, worst, extent,
                    shift);
        proj_destroy(peer);
        return false;
    }
    Point point;
    auto const times = bench::medians(ROUNDS, {
                                                  [&] { domain.tran(earth, points); },
                                                  [&] { trans(PJ_FWD, lon, lat); },
                                                  [&] { domain.tran(points, back); },
                                                  [&] { trans(PJ_INV, x, y); },
                                                  [&] {
                                                      for (auto const & e : earth.all())
                                                          domain.tran(e, point);
                                                  },
                                              });
    std::string const name = std::string("projection ") + job.name;
    bench::printRow(name + " forward", "PROJ", times[0], times[1], POINTS, job.forward_limit);
    bench::printRow(name + " inverse", "PROJ", times[2], times[3], POINTS, job.inverse_limit);
    bench::printRow(name + " single point", "PROJ", times[4], times[1], POINTS, 2);
    proj_destroy(peer);
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
