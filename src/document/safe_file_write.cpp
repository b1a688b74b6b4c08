#include "document/safe_file_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <random>

namespace ampora {
namespace {

namespace fs = std::filesystem;

std::string SystemReason(int error) {
    return std::strerror(error);
}

// The file a path finally names, following symbolic links (a dangling link names its target).
fs::path FinalTarget(fs::path path) {
    for (int hop = 0; hop < 40; ++hop) {
        std::error_code error;
        if (!fs::is_symlink(fs::symlink_status(path, error))) {
            break;
        }
        const fs::path next = fs::read_symlink(path, error);
        if (error) {
            break;
        }
        path = next.is_absolute() ? next : path.parent_path() / next;
    }
    return path;
}

// Writes every byte to an open descriptor and flushes it to the disk; errno on failure.
int WriteAllAndSync(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(fd, bytes.data(), bytes.size());
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return ::fsync(fd) == 0 ? 0 : errno;
}

std::optional<std::string> ReadAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        return std::nullopt;
    }
    std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (in.bad()) {
        return std::nullopt;
    }
    return bytes;
}

// The fallback for a writable file in a folder that takes no new files.
FileWriteResult RewriteInPlace(const fs::path& target, std::string_view bytes) {
    const std::optional<std::string> old = ReadAll(target);
    if (!old) {
        return {false, SystemReason(EACCES)};
    }
    const int fd = ::open(target.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    if (fd < 0) {
        return {false, SystemReason(errno)};
    }
    const int error = WriteAllAndSync(fd, bytes);
    if (error != 0) {
        // Put the old bytes back: they fitted before, so they fit again.
        if (::ftruncate(fd, 0) == 0 && ::lseek(fd, 0, SEEK_SET) == 0) {
            WriteAllAndSync(fd, *old);
        }
    }
    ::close(fd);
    return error == 0 ? FileWriteResult{} : FileWriteResult{false, SystemReason(error)};
}

} // namespace

FileWriteResult WriteFileSafely(const std::string& path, std::string_view bytes) {
    const fs::path target = FinalTarget(fs::path(path));
    struct stat old {};
    const bool exists = ::stat(target.c_str(), &old) == 0;
    if (exists && S_ISDIR(old.st_mode)) {
        return {false, SystemReason(EISDIR)};
    }

    std::random_device random;
    const fs::path temporary = target.parent_path() / ("." + target.filename().string() +
                                                       ".saving-" + std::to_string(random()));
    const mode_t mode = exists ? (old.st_mode & 07777) : 0666;
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (fd < 0) {
        const int error = errno;
        if (exists && (error == EACCES || error == EROFS || error == EPERM) &&
            ::access(target.c_str(), W_OK) == 0) {
            return RewriteInPlace(target, bytes);
        }
        return {false, SystemReason(error)};
    }
    if (exists) {
        // Keep the old file's permissions and, where allowed, its owner; the umask applied
        // at creation must not narrow them.
        if (::fchmod(fd, mode) != 0 || ::fchown(fd, old.st_uid, old.st_gid) != 0) {
            // Not ours to change: the new file keeps what creating it gave.
        }
    }
    int error = WriteAllAndSync(fd, bytes);
    if (::close(fd) != 0 && error == 0) {
        error = errno;
    }
    if (error == 0 && ::rename(temporary.c_str(), target.c_str()) != 0) {
        error = errno;
    }
    if (error != 0) {
        ::unlink(temporary.c_str());
        return {false, SystemReason(error)};
    }
    return {};
}

} // namespace ampora
