#include "platform/ChangeLock.h"

#include "platform/linux/Descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace Platform {

struct ChangeLock::State {
    Descriptor file;
};

void ChangeLock::take() {
    Descriptor file(::open(file_.c_str(), O_RDONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file.isOpen() || ::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        holder_ = file.isOpen() && (errno == EWOULDBLOCK || errno == EINTR) ? Holder::another : Holder::nobody;
        return;
    }
    // The one before may have removed it meanwhile: then it keeps nobody out any more.
    struct stat status {};
    if (::fstat(file.number(), &status) != 0 || status.st_nlink == 0) {
        holder_ = Holder::another;
        return;
    }
    holder_ = Holder::us;
    state_ = std::make_shared<State>(State{std::move(file)});
}

ChangeLock::~ChangeLock() {
    if (holder_ == Holder::us) {
        ::unlink(file_.c_str()); // while it is held
    }
}

} // namespace Platform
