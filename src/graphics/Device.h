// What every output device can do.
#pragma once

#include "geo/Point.h"
#include "geo/Rect.h"

namespace Yul {

class Image;
class Listener;
class String;

/// The pens that a device keeps apart: each has its own colour, width and style.
enum PenKind { LINE_PEN = 1, MARK_PEN = 2, FILL_PEN = 3, TEXT_PEN = 4 };

/// The kinds of device, as Graph stores them.
enum DeviceKind { NO_DEVICE = 0, WINDOW_DEVICE = 1, POSTSCRIPT_DEVICE = 2, HPGL_DEVICE = 3, META_DEVICE = 4 };

/// An output device: a page in a file or a window. All coordinates are device units; the device rectangle may
/// run downward in y. Colours are the device's own values, which `allocColor` gives. Operations return 1, or
/// 0 for failure. A concrete device derives from Listener as well.
class Device
{
public:
    Device() = default;
    Device(Device const &) = delete;
    Device & operator=(Device const &) = delete;
    virtual ~Device() = default;

    /// Sets every setting to its initial value.
    virtual int init() = 0;
    /// The comma-separated device parameters.
    virtual int setParam(char const * params) = 0;
    virtual int open() = 0;
    /// The device's name.
    virtual int getDevice(String & name) = 0;
    virtual int resize(float width, float height) = 0;
    virtual int manage() = 0;
    virtual int unmanage() = 0;
    virtual int addCallback(char const * name, Listener * listener, void const * data) = 0;
    virtual int doCallback(char const * name, char const * event) = 0;
    virtual int callback(char const * name, char const * event, void const * data) = 0;
    /// Finishes the output; 0 when any of it was lost.
    virtual int close() = 0;
    virtual int update() = 0;
    virtual int clear() = 0;
    virtual int clearRect(Rect const & rect) = 0;
    virtual int setTitle(char const * title) = 0;
    virtual int setIcon(bool is_icon) = 0;
    virtual int setFixed(bool is_fixed) = 0;
    virtual int setInverse(bool is_inverse) = 0;
    virtual int getInverse() = 0;
    virtual int setBackground(char const * color) = 0;
    virtual int setSize(float width, float height) = 0;
    virtual int getSize(float & width, float & height) = 0;
    virtual float getWidth() = 0;
    virtual float getHeight() = 0;
    virtual int setOffset(float x, float y) = 0;
    virtual int getOffset(float & x, float & y) = 0;
    /// The device rectangle, unordered: (x1, y1) is its upper left corner.
    virtual int getCoords(Rect & rect) = 0;
    virtual Rect getCoords() = 0;
    /// Red, green and blue, 0 to 1; returns the device's value for the colour.
    virtual int allocColor(float r, float g, float b) = 0;
    virtual int setColor(int pen, int color) = 0;
    virtual int setLineWidth(int pen, float width) = 0;
    virtual int setLineStyle(int pen, int style) = 0;
    virtual int setFillStyle(int pen, int style) = 0;
    virtual int drawLine(int pen, float x1, float y1, float x2, float y2) = 0;
    virtual int drawLine(int pen, Points const & points) = 0;
    virtual int drawFill(int pen, Points const & points) = 0;
    /// Where the position of an image lies in it: horizontally 0 or 1 left, 2 centre, 3 right; vertically 0
    /// or 1 bottom, 2 centre, 3 top.
    virtual int setImageAlign(int horizontal, int vertical) = 0;
    virtual int drawImage(Image const & image, float x, float y) = 0;
    /// The same into one frame of a loop.
    virtual int drawImage(Image const & image, int frame, float x, float y) = 0;
    virtual int getImage(Image & image) = 0;
    virtual int setFont(char const * font) = 0;
    virtual int setTextAlign(int horizontal, int vertical) = 0;
    virtual int drawText(Point const & point, char const * text) = 0;
    /// The clip rectangle in force.
    virtual Rect getClip() = 0;
    virtual int setClip(float x1, float y1, float x2, float y2) = 0;
    virtual int setClip(Rect rect) = 0;
    virtual int setCursor(int cursor) = 0;
    virtual int copyFrame(int from, int to) = 0;
    virtual int displayFrame(int frame) = 0;
    virtual int clearFrame(int frame) = 0;
    virtual int newFrame(int frame) = 0;
    virtual int newFrame() = 0;
    virtual int isLooping() = 0;
    virtual int getFrame() = 0;
    virtual int setFrame(int frame) = 0;
    virtual int incFrame(int step) = 0;
    virtual int deleteFrame(int frame) = 0;
    virtual int getNumFrames() = 0;
    virtual int message(char const * text) = 0;
    virtual int bell(int volume) = 0;
    /// Device units of one dot, in which line widths are counted.
    virtual float getDotSize() = 0;
};

} // namespace Yul
