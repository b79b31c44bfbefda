#include "core/Output.h"

#include "core/WriteAll.h"

#include <cstdio>

namespace Yul::detail {
namespace {

void (*flush_hook)() = nullptr;
void (*exit_hook)() = nullptr;

void write(std::FILE * stream, std::string_view text)
{
    runFlushHook();
    std::fflush(stream); // what the host has written there comes first
    (void)writeAll(fileno(stream), text);
}

} // namespace

void writeOut(std::string_view text)
{
    write(stdout, text);
}

void writeErr(std::string_view text)
{
    write(stderr, text);
}

void setFlushHook(void (*hook)())
{
    flush_hook = hook;
}

void runFlushHook()
{
    if (flush_hook != nullptr)
        flush_hook();
}

void setExitHook(void (*hook)())
{
    exit_hook = hook;
}

void runExitHook()
{
    if (exit_hook != nullptr)
        exit_hook();
}

} // namespace Yul::detail
