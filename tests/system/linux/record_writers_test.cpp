#include "record_folder.h"

#include "system/result_log.h"

#include <poll.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <stdexcept>
#include <string>

// Several processes write at once, and some are killed at it.
namespace {

using vexil::system::CimStatus;
using vexil::system::ResultLog;
using vexil::system::ResultRecord;

/// One writer's serials: which it tried, and which the log said to have.
struct Account {
    int next = 0;
    int lines = 0; ///< that its processes have said
    std::set<int> acknowledged;

    /// Goes back to the record that the writer was killed at, if the log has not said to have it.
    void tryAgain() {
        if (next > 0 && !acknowledged.contains(next - 1)) {
            --next;
        }
    }
};

/// What becomes of a record that its writer was killed at.
enum class Unacknowledged { PassedOver, TriedAgain };

/// A process that writes.
class Writer {
public:
    Writer(const std::string& file, const std::string& name, int first, int end) {
        int ends[2];
        if (pipe(ends) != 0) {
            throw std::runtime_error("no pipe");
        }
        process_ = fork();
        if (process_ == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
            execl(VEXIL_RECORD_WRITER, VEXIL_RECORD_WRITER, file.c_str(), name.c_str(),
                  std::to_string(first).c_str(), std::to_string(end).c_str(), nullptr);
            _exit(127);
        }
        close(ends[1]);
        output_ = ends[0];
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { close(output_); }

    [[nodiscard]] int output() const { return output_; }
    void kill() const { ::kill(process_, SIGKILL); }

    /// Reads what is there; false at the end of the process.
    bool read(Account& account) {
        char buffer[4096];
        const auto size = ::read(output_, buffer, sizeof buffer);
        if (size <= 0) {
            return false;
        }
        text_.append(buffer, static_cast<std::size_t>(size));
        for (auto end = text_.find('\n'); end != std::string::npos; end = text_.find('\n')) {
            const int serial = std::stoi(text_.substr(1, end - 1));
            if (text_.front() == '=') {
                account.acknowledged.insert(serial);
            }
            account.next = serial + 1;
            ++account.lines;
            text_.erase(0, end + 1);
        }
        return true;
    }
    /// What it ended with; -1 if it was killed.
    int wait() const {
        int status = 0;
        waitpid(process_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

private:
    pid_t process_ = 0;
    int output_ = -1;
    std::string text_;
};

class RecordWriters : public vexil::tests::RecordFolderTest {
protected:
    static constexpr int writers = 4;

    /// Writers are killed here, and never the machine: a file in memory shows the same, without a wait for
    /// the disk at each record.
    static void SetUpTestSuite() {
        constexpr const char* memory = "/dev/shm";
        if (access(memory, W_OK) == 0) {
            setenv("TMPDIR", memory, 1);
        }
    }

    /// Runs the writers until each has tried `count` records, killing one whenever they have said so many
    /// lines more; 0: none.
    void run(int count, int linesFromKillToKill, Unacknowledged unacknowledged) {
        std::map<int, std::unique_ptr<Writer>> running;
        int nextKill = linesFromKillToKill;
        const auto start = [&](int writer) {
            running[writer] =
                std::make_unique<Writer>(file_, std::to_string(writer), accounts_[writer].next, count);
        };
        for (int writer = 0; writer < writers; ++writer) {
            start(writer);
        }
        while (!running.empty()) {
            if (linesFromKillToKill > 0 && linesSaid() >= nextKill) {
                auto victim = running.begin();
                std::advance(victim, random_() % running.size());
                victim->second->kill();
                nextKill += linesFromKillToKill;
            }
            std::vector<pollfd> polled;
            std::vector<int> owners;
            for (const auto& [writer, process] : running) {
                polled.push_back({process->output(), POLLIN, 0});
                owners.push_back(writer);
            }
            poll(polled.data(), polled.size(), 10);
            for (std::size_t i = 0; i < polled.size(); ++i) {
                if (polled[i].revents == 0 || running[owners[i]]->read(accounts_[owners[i]])) {
                    continue;
                }
                const int ended = running[owners[i]]->wait();
                running.erase(owners[i]);
                ASSERT_TRUE(ended == 0 || ended == -1) << "a writer was refused a record";
                killed_ += ended == -1 ? 1 : 0;
                if (ended == -1) {
                    if (unacknowledged == Unacknowledged::TriedAgain) {
                        accounts_[owners[i]].tryAgain();
                    }
                    start(owners[i]);
                }
            }
        }
    }

    [[nodiscard]] int linesSaid() const {
        int lines = 0;
        for (const auto& [writer, account] : accounts_) {
            lines += account.lines;
        }
        return lines;
    }

    std::map<int, Account> accounts_;
    int killed_ = 0;
    std::mt19937 random_{20260131};
};

TEST_F(RecordWriters, LoseNoAcknowledgedRecordThoughTheyAreKilled) {
    // Ten thousand in all, the most that a class takes before its oldest id lies too high.
    constexpr int perWriter = 2500;
    run(perWriter, 120, Unacknowledged::PassedOver);
    EXPECT_GE(killed_, 100) << "too few were killed for a proof";

    ResultLog log(cim_);
    std::vector<ResultRecord> records;
    ASSERT_EQ(log.read(records), CimStatus::Success);
    EXPECT_EQ(vexil::platform::recordTrouble(file_, vexil::platform::RecordUse::Read), std::nullopt);
    ASSERT_EQ(records.size(), 5000U) << "more than 5000 were written";

    std::map<int, std::vector<int>> kept;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const auto& record = records[i];
        const auto& number = record.deviceUdi;
        // One after the other without a gap: none was given twice, and only the oldest have gone.
        ASSERT_EQ(record.id, records.front().id + static_cast<int>(i));
        ASSERT_EQ(record.deviceDisplayName, "display " + number);
        ASSERT_EQ(record.testName, "test " + number);
        ASSERT_EQ(record.testStatus, "status " + number);
        ASSERT_EQ(record.testStartTimestamp, "start " + number);
        ASSERT_EQ(record.testDuration, "duration " + number);
        kept[std::stoi(record.moduleName)].push_back(std::stoi(number));
    }

    std::size_t acknowledged = 0;
    std::size_t pushedOut = 0;
    for (auto& [writer, account] : accounts_) {
        EXPECT_EQ(account.next, perWriter);
        const auto& serials = kept[writer];
        // A writer that was done early may have none left.
        const int oldestKept = serials.empty() ? perWriter : serials.front();
        EXPECT_TRUE(std::ranges::is_sorted(serials)) << "a writer's records stand in the order of its calls";
        const std::set<int> present(serials.begin(), serials.end());
        EXPECT_EQ(present.size(), serials.size()) << "no record stands twice";
        acknowledged += account.acknowledged.size();
        for (const int serial : account.acknowledged) {
            const bool isOlder = serial < oldestKept;
            pushedOut += isOlder ? 1U : 0U;
            EXPECT_TRUE(isOlder || present.contains(serial)) << "record " << serial << " of " << writer;
        }
    }
    const auto written = static_cast<std::size_t>(records.back().id + 1);
    EXPECT_GE(written, acknowledged);
    EXPECT_LE(written, acknowledged + static_cast<std::size_t>(killed_))
        << "a killed writer wrote one more at most";
    EXPECT_LE(pushedOut, static_cast<std::size_t>(records.front().id));
    RecordProperty("killed", killed_);
    RecordProperty("acknowledged", static_cast<int>(acknowledged));
}

TEST_F(RecordWriters, LoseNoneAtAllWhereNothingIsPushedOutAndTheLastIsTriedAgain) {
    // With a second copy of each record that was written before its writer was killed, and not acknowledged.
    constexpr int perWriter = 1200;
    run(perWriter, 120, Unacknowledged::TriedAgain);
    EXPECT_GE(killed_, 50) << "too few were killed for a proof";
    ASSERT_LE(writers * perWriter + killed_, 5000) << "some may have been pushed out";

    ResultLog log(cim_);
    std::vector<ResultRecord> records;
    ASSERT_EQ(log.read(records), CimStatus::Success);
    EXPECT_LE(records.size(), static_cast<std::size_t>(writers * perWriter + killed_));
    std::map<int, std::set<int>> present;
    for (const auto& record : records) {
        present[std::stoi(record.moduleName)].insert(std::stoi(record.deviceUdi));
    }
    for (const auto& [writer, account] : accounts_) {
        EXPECT_EQ(account.acknowledged.size(), static_cast<std::size_t>(perWriter));
        EXPECT_EQ(present[writer], account.acknowledged) << "records of " << writer;
    }
}

TEST_F(RecordWriters, WriteAllRecordsIfNobodyIsKilled) {
    run(100, 0, Unacknowledged::PassedOver);
    ResultLog log(cim_);
    std::vector<ResultRecord> records;
    ASSERT_EQ(log.read(records), CimStatus::Success);
    EXPECT_EQ(records.size(), 400U);
    EXPECT_EQ(records.back().id, 399);
}

} // namespace
