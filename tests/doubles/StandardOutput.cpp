#include "StandardOutput.h"

#include <cstdlib>
#include <iostream>

#include <unistd.h>

namespace doubles {

namespace {

void Flush() {
    std::cout.flush();
    std::fflush(stdout);
}

void Require(bool succeeded, const char* what) {
    if (!succeeded) {
        std::perror(what);
        std::abort();
    }
}

} // namespace

StandardOutput::StandardOutput() : file(std::tmpfile()), original(dup(STDOUT_FILENO)) {
    Require(file != nullptr, "tmpfile");
    Require(original >= 0, "dup");
    Flush();
    Require(dup2(fileno(file), STDOUT_FILENO) >= 0, "dup2");
}

StandardOutput::~StandardOutput() {
    Flush();
    dup2(original, STDOUT_FILENO);
    close(original);
    std::fclose(file);
}

std::string StandardOutput::TakeNew() {
    Flush();
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t count = pread(fileno(file), buffer, sizeof buffer, read);
        Require(count >= 0, "pread");
        if (count == 0) {
            return text;
        }
        text.append(buffer, static_cast<std::size_t>(count));
        read += count;
    }
}

} // namespace doubles
