#include "graphics/FileDevice.h"

#include "core/StrLib.h"
#include "core/Yul.h"
#include "graphics/Image.h"

namespace Yul {

int FileDevice::resize(float /*width*/, float /*height*/)
{
    return 1;
}

int FileDevice::manage()
{
    return 1;
}

int FileDevice::unmanage()
{
    return 1;
}

int FileDevice::addCallback(char const * /*name*/, Listener * /*listener*/, void const * /*data*/)
{
    return 1;
}

int FileDevice::doCallback(char const * /*name*/, char const * /*event*/)
{
    return 1;
}

int FileDevice::callback(char const * /*name*/, char const * /*event*/, void const * /*data*/)
{
    return 1;
}

int FileDevice::update()
{
    return 1;
}

int FileDevice::clear()
{
    return 1;
}

int FileDevice::clearRect(Rect const & /*rect*/)
{
    return 1;
}

int FileDevice::setIcon(bool /*is_icon*/)
{
    return 1;
}

int FileDevice::setFixed(bool /*is_fixed*/)
{
    return 1;
}

int FileDevice::setInverse(bool /*is_inverse*/)
{
    return 1;
}

int FileDevice::getInverse()
{
    return 0;
}

int FileDevice::setBackground(char const * /*color*/)
{
    return 1;
}

int FileDevice::setSize(float /*width*/, float /*height*/)
{
    return 1;
}

int FileDevice::setOffset(float /*x*/, float /*y*/)
{
    return 1;
}

int FileDevice::drawImage(Image const & image, int /*frame*/, float x, float y)
{
    return drawImage(image, x, y);
}

int FileDevice::getImage(Image & image)
{
    image.clear();
    return 0;
}

int FileDevice::setCursor(int /*cursor*/)
{
    return 1;
}

int FileDevice::copyFrame(int /*from*/, int /*to*/)
{
    return 1;
}

int FileDevice::displayFrame(int /*frame*/)
{
    return 1;
}

int FileDevice::clearFrame(int /*frame*/)
{
    return 1;
}

int FileDevice::newFrame(int /*frame*/)
{
    return 1;
}

int FileDevice::newFrame()
{
    return 1;
}

int FileDevice::isLooping()
{
    return 0;
}

int FileDevice::getFrame()
{
    return 0;
}

int FileDevice::setFrame(int /*frame*/)
{
    return 1;
}

int FileDevice::incFrame(int /*step*/)
{
    return 1;
}

int FileDevice::deleteFrame(int /*frame*/)
{
    return 1;
}

int FileDevice::getNumFrames()
{
    return 1;
}

int FileDevice::message(char const * text)
{
    if (StrLib::valid(text))
        Yul::outMessage("%s", text);
    return 1;
}

int FileDevice::bell(int /*volume*/)
{
    return 1;
}

} // namespace Yul
