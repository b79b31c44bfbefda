// The receiver of callbacks.
#pragma once

namespace Yul {

/// Something that wants to hear of events: a device reports to its graph, a graph to its plot.
class Listener
{
public:
    Listener() = default;
    Listener(Listener const &) = default;
    Listener & operator=(Listener const &) = default;
    virtual ~Listener() = default;

    /// Called when an event comes.
    /// name   the callback's name, as it was registered ("AnyEvent").
    /// event  what happened, a text that belongs to the caller.
    /// data   the pointer given at registration.
    /// return 1 when the event was taken, 0 to let others see it (the default).
    virtual int callback(char const * name, char const * event, void const * data);
};

} // namespace Yul
