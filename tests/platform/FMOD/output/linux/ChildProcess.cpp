// A program that runs beside a test.
#include "ChildProcess.h"

#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

ChildProcess::~ChildProcess() {
    End(SIGKILL);
}

void ChildProcess::Start(const std::vector<std::string>& command, const std::string& outputPath) {
    program = command.front();
    std::vector<std::string> words = {"setpriv", "--pdeathsig", "KILL"};
    words.insert(words.end(), command.begin(), command.end());
    std::vector<char*> arguments;
    arguments.reserve(words.size() + 1);
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputPath.c_str(),
                                     O_WRONLY | O_CREAT, 0600);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    EXPECT_EQ(error, 0) << "cannot run " << words[0] << "; it is in the package util-linux";
    child = error == 0 ? child : -1;
}

int ChildProcess::Run(const std::vector<std::string>& command) {
    ChildProcess process;
    process.Start(command);
    return process.Wait();
}

bool ChildProcess::IsRunning() {
    if (child > 0 && waitpid(child, nullptr, WNOHANG) != 0) {
        child = -1;
    }
    return child > 0;
}

void ChildProcess::Signal(int signal) const {
    if (child > 0) {
        kill(child, signal);
    }
}

void ChildProcess::End(int signal) {
    Signal(signal);
    Wait();
}

int ChildProcess::Wait() {
    int status = -1;
    if (child > 0) {
        waitpid(child, &status, 0);
        child = -1;
    }
    return status;
}
