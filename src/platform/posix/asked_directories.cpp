#include "platform/posix/asked_directories.h"

#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"

#include <deque>
#include <unordered_map>

namespace larkspin {

namespace {

// This many directories are asked for before the first of them has been answered. When an eighth of
// them has been, as many new ones are asked for together.
constexpr std::size_t mostAhead = 256;
constexpr std::size_t askedAnew = mostAhead / 8 * 7;
// While more answers than this are to come, the worker gets a moment to collect several: being
// woken up for each would take as long as listing a directory.
constexpr std::size_t several = 16;
constexpr auto untilSeveral = std::chrono::microseconds(300);

// Reads ahead in a worker of its own. The worker answers in order, so each answer belongs to the
// question that has waited longest.
class ReaderAhead : public DirectoryReader {
public:
    explicit ReaderAhead(OwnersDisk& disk) : disk_(disk), worker_(disk.borrow()) {}
    ~ReaderAhead() override {
        // A worker that still owes answers can't be lent to anybody else.
        if (asked_.empty())
            disk_.giveBack(std::move(worker_));
        else if (worker_)
            disk_.end(std::move(worker_));
    }
    ReaderAhead(const ReaderAhead&) = delete;
    ReaderAhead& operator=(const ReaderAhead&) = delete;

    void expect(const std::vector<std::string>& paths) override {
        expected_.insert(expected_.begin(), paths.begin(), paths.end());
        askAhead();
    }

    DirectoryRead read(const std::string& path) override {
        if (!isAskedFor(path)) {
            // One that nobody named ahead, or out of turn.
            std::erase(expected_, path);
            ask(path);
        }
        while (!answers_.contains(path) && !asked_.empty())
            takeNext();
        const auto found = answers_.find(path);
        DirectoryRead read = found == answers_.end() ? DirectoryRead() : std::move(found->second);
        if (found != answers_.end())
            answers_.erase(found);
        return read;
    }

private:
    bool isAskedFor(const std::string& path) const {
        return answers_.contains(path) ||
               std::find(asked_.begin(), asked_.end(), path) != asked_.end();
    }

    void ask(const std::string& path) {
        if (disk_.isHung(nativePath(path))) {
            answers_[path] = DirectoryRead(DirectoryRead::Outcome::unanswered);
            return;
        }
        if (!worker_)
            worker_ = disk_.borrow();
        if (worker_)
            worker_->add(put(DiskQuestion::list, path));
        // Even if no worker could be started the path counts as asked: when its answer is due, it
        // is given up.
        asked_.push_back(path);
    }

    void askAhead() {
        if (asked_.size() > askedAnew)
            return;
        while (!expected_.empty() && asked_.size() < mostAhead) {
            const std::string path = std::move(expected_.front());
            expected_.pop_front();
            if (!isAskedFor(path))
                ask(path);
        }
        if (worker_)
            worker_->flush();
    }

    void takeNext() {
        std::string answer;
        const OwnersDisk::Wait wait =
            worker_ ? disk_.await(*worker_, answer,
                                  asked_.size() > several ? untilSeveral : Nanoseconds(0))
                    : OwnersDisk::Wait::died;
        const std::string path = std::move(asked_.front());
        asked_.pop_front();
        if (wait == OwnersDisk::Wait::answered) {
            answers_[path] = directoryIn(answer);
            mayBeDead_ = false;
        } else if (wait == OwnersDisk::Wait::died && worker_ && std::exchange(mayBeDead_, false)) {
            asked_.push_front(path); // the worker may have died while nobody used it
            askAnew();
        } else {
            giveUp(path, wait);
        }
        askAhead();
    }

    // Paths that were asked after this one are asked again, of another worker.
    void giveUp(const std::string& path, OwnersDisk::Wait wait) {
        using enum DirectoryRead::Outcome;
        answers_[path] = DirectoryRead(wait == OwnersDisk::Wait::hung ? unanswered : failed);
        if (wait == OwnersDisk::Wait::hung)
            disk_.hasHung(std::move(worker_), nativePath(path));
        askAnew();
    }

    void askAnew() {
        if (worker_)
            disk_.end(std::move(worker_));
        worker_ = nullptr;
        for (const std::string& path : std::exchange(asked_, {}))
            ask(path);
    }

    OwnersDisk& disk_;
    std::unique_ptr<DiskWorker> worker_;
    bool mayBeDead_ = true; // the borrowed worker, which hasn't answered yet
    std::deque<std::string> expected_, asked_;
    std::unordered_map<std::string, DirectoryRead> answers_; // by path, not yet told
};

} // namespace

DirectoryRead AskedDirectories::list(const std::string& path) {
    if (path == own_)
        return directories_.list(path);
    const auto answer = disk_.ask(put(DiskQuestion::list, path), nativePath(path));
    return answer ? directoryIn(*answer) : DirectoryRead(DirectoryRead::Outcome::unanswered);
}

std::unique_ptr<DirectoryReader> AskedDirectories::reader() {
    return std::make_unique<ReaderAhead>(disk_);
}

// Only `..` needs the disk: what lies above a link to a directory can't be told from its path.
std::string AskedDirectories::drivePath(std::string_view typed) {
    const std::string native = directories_.nativeAsTyped(typed);
    if (native.find("/..") == std::string::npos)
        return directories_.drivePath(typed);
    const auto answer = disk_.ask(put(DiskQuestion::drivePath, typed), native);
    return answer ? textIn(*answer) : larkspin::drivePath(native); // as far as the path alone tells
}

} // namespace larkspin
