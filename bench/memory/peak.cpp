// Runs a program to its end and says on standard error, in a line of its own, how many kilobytes it held at most:
// peak PROGRAM [ARGUMENT...]. Being small itself it adds nothing to what the program is charged with.
#include <cstdio>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

extern char ** environ;

int main(int argc, char ** argv)
{
    pid_t child = 0;
    int status = 0;
    rusage usage{};
    if (argc < 2 || posix_spawnp(&child, argv[1], nullptr, nullptr, argv + 1, environ) != 0 ||
        wait4(child, &status, 0, &usage) != child || !WIFEXITED(status))
        return 1;
    std::fprintf(stderr, "%ld\n", usage.ru_maxrss);
    return WEXITSTATUS(status);
}
