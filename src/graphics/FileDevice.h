// What all devices that write a file have in common.
#pragma once

#include "graphics/Device.h"
#include "graphics/Listener.h"

namespace Yul {

/// A device that writes a file. What only a window can do (frames, cursor, callbacks, icon, size, offset,
/// background, inverse, bell) does nothing and reports success; it has one frame and no image to give back.
class FileDevice : public Device, public Listener
{
public:
    int resize(float width, float height) override;
    int manage() override;
    int unmanage() override;
    int addCallback(char const * name, Listener * listener, void const * data) override;
    int doCallback(char const * name, char const * event) override;
    int callback(char const * name, char const * event, void const * data) override;
    int update() override;
    int clear() override;
    int clearRect(Rect const & rect) override;
    int setIcon(bool is_icon) override;
    int setFixed(bool is_fixed) override;
    int setInverse(bool is_inverse) override;
    int getInverse() override;
    int setBackground(char const * color) override;
    int setSize(float width, float height) override;
    int setOffset(float x, float y) override;
    int drawImage(Image const & image, int frame, float x, float y) override;
    int getImage(Image & image) override;
    int setCursor(int cursor) override;
    int copyFrame(int from, int to) override;
    int displayFrame(int frame) override;
    int clearFrame(int frame) override;
    int newFrame(int frame) override;
    int newFrame() override;
    int isLooping() override;
    int getFrame() override;
    int setFrame(int frame) override;
    int incFrame(int step) override;
    int deleteFrame(int frame) override;
    int getNumFrames() override;
    /// Prints the text as an ordinary message.
    int message(char const * text) override;
    int bell(int volume) override;

    using Device::drawImage;
    using Device::getCoords;
};

} // namespace Yul
