// Pages drawn for tests, read back as text.
#pragma once

#include "core/Yul.h"
#include "cpp/Folder.h"
#include "graphics/Graph.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Yul::test {

/// A file of this test's own; its path is short, because a device keeps 60 characters.
struct PageFile
{
    [[nodiscard]] std::string text() const { return octetsOf(path); }

    void write(std::string const & octets) const { folder.write("page.ps", octets); }

    Folder const folder;
    std::string const path = folder.of("page.ps");
};

/// A portrait page whose window coordinates are its points, unless the parameters say otherwise.
class Page
{
public:
    explicit Page(std::string const & params = "port")
    {
        Yul::setDatabasePath(YUL_DATABASE);
        testing::internal::CaptureStdout();
        is_open = graph.open("postscript", (file.path + "," + params).c_str()) != 0;
        notice = testing::internal::GetCapturedStdout();
        Rect points(0, 0, 756, 576);
        graph.setWindow(points);
        graph.setViewport(graph.getMaxViewport());
    }

    /// What was drawn since the page was opened, without header and trailer.
    [[nodiscard]] std::string drawn()
    {
        graph.close();
        std::string const text = file.text();
        std::size_t const from = text.find('\n', text.find("%%Yul Plot")) + 1;
        return text.substr(from, text.find("%%End of plot") - from);
    }

    PageFile file;
    Graph graph;
    bool is_open = false;
    std::string notice;
};

/// The polylines and areas of a page, in points.
inline std::vector<std::vector<Point>> paths(std::string const & text)
{
    std::vector<std::vector<Point>> found;
    std::size_t at = 0;
    while (at < text.size()) {
        std::size_t const end = text.find('\n', at);
        std::string const line = text.substr(at, end - at);
        Point p;
        char verb[3] = "";
        if (std::sscanf(line.c_str(), "%f %f %2s", &p.x, &p.y, verb) == 3) {
            if (std::string(verb) == "mv")
                found.emplace_back();
            if (!found.empty() && (std::string(verb) == "mv" || std::string(verb) == "ln"))
                found.back().push_back(p);
        }
        at = end == std::string::npos ? text.size() : end + 1;
    }
    return found;
}

/// The rectangle round all of them.
inline Rect bounds(std::vector<std::vector<Point>> const & lines)
{
    Rect box;
    box.setu(1e9F, 1e9F, -1e9F, -1e9F);
    for (auto const & line : lines)
        for (Point const & p : line)
            box.setu(std::min(box.x1, p.x), std::min(box.y1, p.y), std::max(box.x2, p.x),
                     std::max(box.y2, p.y));
    return box;
}

} // namespace Yul::test
