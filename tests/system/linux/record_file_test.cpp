#include "record_folder.h"

#include "system/result_log.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>

// The file of the records when something is wrong with it, or with the place that it is to stand in.
namespace {

using vexil::platform::Database;
using vexil::platform::RecordUse;
using vexil::tests::RecordFolderTest;

class RecordFile : public RecordFolderTest {
protected:
    [[nodiscard]] std::string trouble(RecordUse use) const {
        return vexil::platform::recordTrouble(file_, use).value_or("");
    }
    void writeFile(const std::string& content) const {
        std::filesystem::create_directories(file_.parent_path());
        std::ofstream(file_, std::ios::binary) << content;
    }
    /// Nothing may be done with a file that is something else.
    void expectRefused(const std::string& reason) {
        const auto before = bytes();
        EXPECT_EQ(write("new"), 18);
        EXPECT_EQ(query({"Id"}), 18);
        EXPECT_EQ(remove(L"ROOT", L"Norvane", L"Norvane_Diagnostics"), 18);
        const auto advised = reason + "; it was left as it is: move it away to begin a new one";
        EXPECT_EQ(trouble(RecordUse::Read), advised);
        EXPECT_EQ(trouble(RecordUse::Write), advised);
        EXPECT_EQ(bytes(), before) << "what is broken is never written over";
    }
    void execute(const std::string& sql) const { Database(file_, Database::Access::Write).execute(sql); }
};

TEST_F(RecordFile, IsNoTroubleBeforeTheFirstRecordAndAfterIt) {
    EXPECT_EQ(trouble(RecordUse::Read), "");
    EXPECT_FALSE(std::filesystem::exists(file_));
    EXPECT_EQ(trouble(RecordUse::Write), "");
    EXPECT_EQ(write("first"), 0);
    EXPECT_EQ(trouble(RecordUse::Read), "");
    EXPECT_EQ(trouble(RecordUse::Write), "");
}

TEST_F(RecordFile, StandsInAFolderForItsUserOnly) {
    EXPECT_EQ(write("first"), 0);
    struct stat folder {};
    ASSERT_EQ(stat(file_.parent_path().c_str(), &folder), 0);
    EXPECT_EQ(folder.st_mode & 0777U, 0700U);
}

TEST_F(RecordFile, IsWrittenOutWithItsFolderBeforeARecordCounts) {
    EXPECT_EQ(write("first"), 0);
    constexpr std::int64_t extra = 3; // of SQLite's "synchronous"
    EXPECT_EQ(Database(file_, Database::Access::Write).number("PRAGMA synchronous"), extra);
    EXPECT_EQ(Database(file_, Database::Access::Write)
                  .number("SELECT count(*) FROM pragma_journal_mode "
                          "WHERE journal_mode = 'delete'"),
              1);
}

TEST_F(RecordFile, ThatIsEmptyIsANewOne) {
    writeFile("");
    EXPECT_EQ(query({"Id"}), 19);
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT"), 0);
    EXPECT_EQ(trouble(RecordUse::Read), "");
    EXPECT_EQ(write("first"), 0);
}

TEST_F(RecordFile, ThatIsNoDatabaseIsLeftAsItIs) {
    writeFile("what somebody wrote, long enough to be taken for the first page of something: " +
              std::string(2000, '.'));
    expectRefused("file is not a database");
    EXPECT_EQ(query({"Name"}, "__Namespace", L"ROOT"), 21) << "the outermost namespace is there all the same";
}

TEST_F(RecordFile, OfAnotherProgramIsLeftAsItIs) {
    std::filesystem::create_directories(file_.parent_path());
    execute("CREATE TABLE notes (text TEXT)");
    expectRefused("it is a database of another program");
}

TEST_F(RecordFile, OfANewerVersionIsLeftAsItIs) {
    write("first");
    execute("PRAGMA user_version = 2");
    expectRefused("it was written by a newer version of this program");
}

TEST_F(RecordFile, ThatWasCutIsToldOfAndLeftAsItIs) {
    fill(0, 2000);
    std::filesystem::resize_file(file_, 20480);
    const auto before = bytes();
    EXPECT_NE(trouble(RecordUse::Read), "");
    EXPECT_NE(trouble(RecordUse::Write), "");
    EXPECT_NE(query({"Id"}), 0);
    EXPECT_EQ(bytes(), before);
}

TEST_F(RecordFile, WithDamageInTheMiddleIsToldOfAndKeepsItsBytes) {
    fill(0, 2000);
    {
        std::fstream stream(file_, std::ios::binary | std::ios::in | std::ios::out);
        stream.seekp(5 * 4096);
        stream << std::string(4096, '\xA5');
    }
    const auto before = bytes();
    EXPECT_NE(trouble(RecordUse::Read), "");
    EXPECT_EQ(trouble(RecordUse::Write), trouble(RecordUse::Read));
    EXPECT_EQ(query({"Id", "TestName"}), 21);
    std::vector<vexil::system::ResultRecord> records;
    EXPECT_EQ(vexil::system::ResultLog(cim_).read(records), vexil::system::CimStatus::QueryFailed)
        << "what cannot be read is not taken for empty";
    EXPECT_EQ(write("new"), 19);
    EXPECT_EQ(bytes(), before);
}

TEST_F(RecordFile, InAPlaceThatIsNoFolderIsTroubleForWritingOnly) {
    std::ofstream(folder_ / "state") << "a file where a folder should be";
    EXPECT_EQ(write("new"), 18);
    EXPECT_EQ(query({"Id"}), 19);
    EXPECT_EQ(trouble(RecordUse::Write), "the folder cannot be made: Not a directory");
    EXPECT_EQ(trouble(RecordUse::Read), "");
}

TEST_F(RecordFile, InAFolderThatNobodyCanWriteToIsTroubleForWriting) {
    // Not even the superuser makes a folder in the kernel's own.
    EXPECT_EQ(vexil::platform::recordTrouble("/proc/vexil/cim.sqlite3", RecordUse::Write),
              "the folder cannot be made: No such file or directory");
    EXPECT_EQ(vexil::platform::recordTrouble("/proc/cim.sqlite3", RecordUse::Write),
              "unable to open database file: No such file or directory");
}

TEST_F(RecordFile, OfAUserWithoutAHomeIsTrouble) {
    EXPECT_EQ(vexil::platform::recordTrouble(std::nullopt, RecordUse::Read), "the user has no home folder");
}

/// Files may not grow beyond a size: what a full disk looks like to a program.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{size, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

TEST_F(RecordFile, OnAFullDiskTakesNoRecordAndLosesNone) {
    fill(0, 100);
    const auto before = bytes();
    {
        const FullDisk full(512);
        EXPECT_EQ(write("new"), 19);
        EXPECT_NE(trouble(RecordUse::Write), "");
    }
    EXPECT_EQ(bytes(), before);
    EXPECT_EQ(trouble(RecordUse::Write), "");
    EXPECT_EQ(write("new"), 0);
    EXPECT_EQ(query({"Id"}), 0);
    EXPECT_EQ(rows_.size(), 101U);
}

TEST(RecordPlace, IsInTheUsersStateFolder) {
    setenv("XDG_STATE_HOME", "/elsewhere/state", 1);
    EXPECT_EQ(vexil::platform::recordPlace(), "/elsewhere/state/vexil/cim.sqlite3");
    unsetenv("XDG_STATE_HOME");
    setenv("HOME", "/home/ada", 1);
    EXPECT_EQ(vexil::platform::recordPlace(), "/home/ada/.local/state/vexil/cim.sqlite3");
}

} // namespace
