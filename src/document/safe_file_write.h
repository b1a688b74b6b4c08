#pragma once
// Writing a whole file so that a failure never destroys what was there before.

#include <string>
#include <string_view>

namespace ampora {

struct FileWriteResult {
    bool written = true;
    std::string reason; // the system's reason in words ("No space left on device"), when not
};

// Writes `bytes` to `path`. A symbolic link is followed and its target written, so the link
// stays a link. The bytes go to a new file beside the target, which is flushed to the disk
// and then renamed over the target, taking the old file's permissions; on any failure the old
// file stays exactly as it was and no temporary file is left. When the folder cannot take a
// new file but the target itself is writable, the target is rewritten in place, and if that
// fails part-way its old bytes are put back.
FileWriteResult WriteFileSafely(const std::string& path, std::string_view bytes);

} // namespace ampora
