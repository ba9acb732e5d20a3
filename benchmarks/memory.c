/* memory COMMAND [ARGUMENT]...

   Runs a command and prints its resident memory at its exit, in KiB, to standard error: a line for each
   mapping, then a line with the sum and the number of page faults.

   The kernel's own figure, the peak that getrusage() returns, is updated in batches and varies between runs.
   This program adds up the mappings while the process is stopped at its exit. Only memory that the command
   has unmapped by then is missing; fobrob unmaps none. */

#include <stdio.h>
#include <stdlib.h>
#include <sys/personality.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

static void require(int condition, const char* what)
{
    if (condition)
        return;
    perror(what);
    exit(1);
}

static long residentKiB(pid_t process)
{
    char name[64];
    snprintf(name, sizeof name, "/proc/%d/smaps", (int)process);
    FILE* const file = fopen(name, "r");
    require(file != NULL, name);
    char line[512];
    char mapping[256] = "";
    long sum = 0;
    while (fgets(line, sizeof line, file))
    {
        long amount = 0;
        if (sscanf(line, "Rss: %ld kB", &amount) == 1)
        {
            fprintf(stderr, "%6ld %s\n", amount, mapping);
            sum += amount;
        }
        else if (sscanf(line, "%*x-%*x %4s", mapping) == 1)
            sscanf(line, "%*s %*s %*s %*s %*s %255[^\n]", mapping);
    }
    fclose(file);
    return sum;
}

int main(int count, char** arguments)
{
    if (count < 2)
    {
        fputs("usage: memory COMMAND [ARGUMENT]...\n", stderr);
        return 2;
    }
    const pid_t process = fork();
    require(process >= 0, "fork");
    if (process == 0)
    {
        /* How many pages of a file one fault maps depends on the address. */
        require(personality(ADDR_NO_RANDOMIZE) != -1, "personality");
        require(ptrace(PTRACE_TRACEME, 0, 0, 0) == 0, "ptrace");
        execv(arguments[1], arguments + 1);
        require(0, arguments[1]);
    }

    int status;
    require(waitpid(process, &status, 0) == process && WIFSTOPPED(status), arguments[1]);
    require(ptrace(PTRACE_SETOPTIONS, process, 0, PTRACE_O_TRACEEXIT) == 0, "ptrace");
    long memory = 0;
    while (ptrace(PTRACE_CONT, process, 0, 0) == 0 && waitpid(process, &status, 0) == process &&
           WIFSTOPPED(status))
        memory = residentKiB(process);

    struct rusage usage;
    require(getrusage(RUSAGE_CHILDREN, &usage) == 0, "getrusage");
    fprintf(stderr, "%ld %ld\n", memory, usage.ru_minflt);
    return 0;
}
