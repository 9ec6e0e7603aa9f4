#include "host/platform/child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstring>

extern char** environ;

namespace vexil::host::platform {

namespace {

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void writeTo(const std::string& file) {
        posix_spawn_file_actions_addopen(&actions_, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, 1, file.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_adddup2(&actions_, 1, 2);
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

} // namespace

std::optional<int> runChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                            const std::filesystem::path& output, std::string& reason) {
    std::string name = program.string();
    auto texts = arguments;
    std::vector<char*> pointers = {name.data()};
    for (auto& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);

    FileActions actions;
    actions.writeTo(output.string());
    pid_t child = 0;
    const int error = posix_spawn(&child, name.c_str(), actions.get(), nullptr, pointers.data(), environ);
    if (error != 0) {
        reason = std::strerror(error);
        return std::nullopt;
    }
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR) {
            reason = std::strerror(errno);
            return std::nullopt;
        }
    }
    if (!WIFEXITED(status)) {
        reason = std::string("it was ended by the signal ") + strsignal(WTERMSIG(status));
        return std::nullopt;
    }
    return WEXITSTATUS(status);
}

} // namespace vexil::host::platform
