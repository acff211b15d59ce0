#include <Corvex/platform/UserDefaults.h>

#include <array>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <new>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include <pwd.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <Corvex/platform/Checked.h>

// The file is an SQLite database with a rollback journal, not a write-ahead log: the settings stay one file without
// companions, it works in a home directory on a file server (a write-ahead log needs memory shared by all readers), and
// settings are read far more often than written. Each call opens the file, so that one that was replaced or removed
// meanwhile is never written to through an old handle.

namespace corvex::inline v0 {
namespace {

using Problem = UserDefaultsError::Case;
using Value = UserDefaults::Value;

/// "CVXS": marks the database as a store of settings (SQLite database file format, section 1.3.14).
constexpr int applicationId = 0x43565853;
constexpr int formatVersion = 1;
constexpr int longestWaitMilliseconds = 30'000;

struct CloseDatabase {
    void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
};

/// Waits between attempts to lock the file: short, and never the same for two processes, so that none starves.
int waitForOthers(void* waited, int attempt) {
    const auto elapsed = static_cast<int*>(waited);
    if (*elapsed >= longestWaitMilliseconds) return 0;
    unsigned int random = 0;
    sqlite3_randomness(sizeof random, &random);
    const int pause = 1 + static_cast<int>(random % (attempt < 10 ? 4U : 16U));
    *elapsed += pause;
    sqlite3_sleep(pause);
    return 1;
}

/// One opened store and one transaction in it, rolled back unless commit() is called.
class Connection {
public:
    enum class Mode : std::uint8_t { read, write };

    Connection(std::filesystem::path file, Mode mode) : file_(std::move(file)), mode_(mode) {
        const int flags = mode == Mode::write ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE : SQLITE_OPEN_READWRITE;
        sqlite3* database = nullptr;
        // A path of "file:…" or ":memory:" must not mean something else than a file.
        const int result = sqlite3_open_v2(std::filesystem::absolute(file_).c_str(), &database, flags, nullptr);
        database_.reset(database);
        check(result);
        sqlite3_extended_result_codes(database, 1);
        sqlite3_busy_handler(database, waitForOthers, &waited_);
        run(mode == Mode::write ? "BEGIN IMMEDIATE" : "BEGIN");
        requireStore();
    }

    /// Whether there is nothing in it yet, as in a file that a write has just made.
    [[nodiscard]] bool isEmpty() const noexcept { return isEmpty_; }

    class Statement {
    public:
        Statement(Connection& connection, const char* text) : connection_(connection) {
            sqlite3_stmt* statement = nullptr;
            connection.check(sqlite3_prepare_v2(connection.database_.get(), text, -1, &statement, nullptr));
            statement_.reset(statement);
        }
        Statement& bind(int place, std::string_view text) {
            const char* bytes = text.empty() ? "" : text.data();  // a null pointer would be no text at all
            connection_.check(
                sqlite3_bind_text64(statement_.get(), place, bytes, text.size(), SQLITE_STATIC, SQLITE_UTF8));
            return *this;
        }
        Statement& bind(int place, const Value& value) {
            if (const auto* text = std::get_if<std::string>(&value)) return bind(place, std::string_view(*text));
            if (const auto* real = std::get_if<double>(&value)) {
                connection_.check(sqlite3_bind_double(statement_.get(), place, *real));
            } else {
                const auto* isOn = std::get_if<bool>(&value);
                connection_.check(sqlite3_bind_int64(statement_.get(), place,
                                                     isOn != nullptr ? *isOn : std::get<std::int64_t>(value)));
            }
            return *this;
        }
        /// Whether there is a row.
        bool step() {
            const int result = sqlite3_step(statement_.get());
            if (result != SQLITE_ROW && result != SQLITE_DONE) connection_.check(result);
            return result == SQLITE_ROW;
        }
        [[nodiscard]] std::int64_t integer(int column) const { return sqlite3_column_int64(statement_.get(), column); }
        [[nodiscard]] std::string text(int column) const {
            const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement_.get(), column));
            const int count = sqlite3_column_bytes(statement_.get(), column);
            return bytes == nullptr ? std::string() : std::string(bytes, static_cast<std::size_t>(count));
        }
        /// The value of a row that begins with its kind and itself. SQLite's own types do not know a Boolean.
        [[nodiscard]] Value value(int column) const {
            switch (integer(column)) {
                case 0: return integer(column + 1) != 0;
                case 1: return integer(column + 1);
                case 2: return sqlite3_column_double(statement_.get(), column + 1);
                case 3: return text(column + 1);
                default: connection_.fail(Problem::corrupt, "a value has a type that is not known");
            }
        }

    private:
        Connection& connection_;
        std::unique_ptr<sqlite3_stmt, FinalizeStatement> statement_;
    };

    void run(const char* text) {
        Statement statement(*this, text);
        while (statement.step()) {}
    }
    void commit() { run("COMMIT"); }
    [[nodiscard]] int changes() const noexcept { return sqlite3_changes(database_.get()); }

    void makeTable() {
        run("CREATE TABLE setting (key TEXT PRIMARY KEY NOT NULL, kind INTEGER NOT NULL, value ANY NOT NULL)"
            " STRICT, WITHOUT ROWID");
        run(("PRAGMA application_id = " + std::to_string(applicationId)).c_str());
        run(("PRAGMA user_version = " + std::to_string(formatVersion)).c_str());
    }

private:
    [[noreturn]] void fail(Problem which, const std::string& problem) const {
        throw UserDefaultsError(which, file_, problem);
    }

    void check(int result) const {
        if (result == SQLITE_OK) return;
        const std::string problem = database_ ? sqlite3_errmsg(database_.get()) : sqlite3_errstr(result);
        switch (result & 0xFF) {
            case SQLITE_NOTADB:
            case SQLITE_CORRUPT:
            case SQLITE_ERROR:  // our statements fit our tables
            case SQLITE_MISMATCH:
            case SQLITE_CONSTRAINT: fail(Problem::corrupt, problem);
            case SQLITE_BUSY:
            case SQLITE_LOCKED: fail(Problem::busy, problem);
            case SQLITE_NOMEM: throw std::bad_alloc();
            default: fail(mode_ == Mode::write ? Problem::unwritable : Problem::unreadable, problem);
        }
    }

    std::int64_t number(const char* query) {
        Statement statement(*this, query);
        return statement.step() ? statement.integer(0) : 0;
    }

    /// Damage is looked for before anything is written: the file is a few pages, which takes microseconds.
    void requireStore() {
        const std::int64_t id = number("PRAGMA application_id");
        isEmpty_ = id == 0 && number("SELECT count(*) FROM sqlite_schema") == 0;
        if (isEmpty_) return;
        if (id != applicationId) fail(Problem::corrupt, "it is a database of something else");
        if (number("PRAGMA user_version") > formatVersion) fail(Problem::newer, "a later version has written it");
        Statement damage(*this, "PRAGMA quick_check(1)");
        if (const bool isRow = damage.step(); !isRow || damage.text(0) != "ok") {
            fail(Problem::corrupt, isRow ? damage.text(0) : "it cannot be checked");
        }
    }

    std::filesystem::path file_;
    Mode mode_;
    int waited_ = 0;
    bool isEmpty_ = false;
    std::unique_ptr<sqlite3, CloseDatabase> database_;
};

/// For reading: nothing where there is no file yet, or nothing in it.
std::unique_ptr<Connection> openForReading(const std::filesystem::path& file) {
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) return nullptr;
    auto connection = std::make_unique<Connection>(file, Connection::Mode::read);
    return connection->isEmpty() ? nullptr : std::move(connection);
}

/// Makes the folder, for the user alone as the XDG specification asks, with those above it that are missing.
void makeFolder(const std::filesystem::path& file) {
    const auto folder = std::filesystem::absolute(file).parent_path();
    std::vector<std::filesystem::path> missing;
    std::error_code error;
    for (auto path = folder; !path.empty() && !std::filesystem::exists(path, error); path = path.parent_path()) {
        missing.push_back(path);
    }
    for (; !missing.empty(); missing.pop_back()) {
        if (::mkdir(missing.back().c_str(), 0700) != 0 && errno != EEXIST) {
            throw UserDefaultsError(Problem::unwritable, file, std::generic_category().message(errno));
        }
    }
}

std::filesystem::path environmentPath(const char* name) {
    const char* text = std::getenv(name);
    return text == nullptr ? std::filesystem::path() : std::filesystem::path(text);
}

std::filesystem::path homeFolder() {
    if (auto home = environmentPath("HOME"); home.is_absolute()) return home;
    std::array<char, 16384> buffer{};
    passwd entry{};
    passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found);
    return found != nullptr && found->pw_dir != nullptr ? found->pw_dir : std::filesystem::path();
}

}  // namespace

UserDefaultsError::UserDefaultsError(Case which, const std::filesystem::path& file, std::string_view problem)
    : Error("settings '" + file.string() + "': " + std::string(problem)), case_(which), file_(file.native()) {}

UserDefaultsError::~UserDefaultsError() = default;

static_assert(std::is_nothrow_copy_constructible_v<UserDefaultsError> &&
              std::is_nothrow_copy_assignable_v<UserDefaultsError>);

std::filesystem::path UserDefaultsError::file() const { return file_.text(); }

UserDefaults::UserDefaults(const std::filesystem::path& file) : file_(file.native()) {}

std::filesystem::path UserDefaults::file() const { return file_; }

UserDefaults UserDefaults::standard() {
    if (const auto named = environmentPath("CORVEX_SETTINGS_FILE"); !named.empty()) return UserDefaults(named);
    auto folder = environmentPath("XDG_CONFIG_HOME");
    if (!folder.is_absolute()) {
        const auto home = homeFolder();
        if (!home.is_absolute()) {
            throw UserDefaultsError(Problem::unreadable, ".config/corvex/settings.sqlite",
                                    "the user has no home folder");
        }
        folder = home / ".config";
    }
    return UserDefaults(folder / "corvex" / "settings.sqlite");
}

std::optional<Value> UserDefaults::value(std::string_view key) const {
    const auto connection = openForReading(file());
    if (!connection) return std::nullopt;
    Connection::Statement query(*connection, "SELECT kind, value FROM setting WHERE key = ?1");
    return query.bind(1, key).step() ? std::optional(query.value(0)) : std::nullopt;
}

UserDefaults::Values UserDefaults::values() const {
    Values all;
    if (const auto connection = openForReading(file())) {
        Connection::Statement query(*connection, "SELECT key, kind, value FROM setting");
        while (query.step()) all.emplace(query.text(0), query.value(1));
    }
    return all;
}

bool UserDefaults::boolean(std::string_view key) const {
    const auto stored = value(key);
    if (!stored) return false;
    if (const auto* isOn = std::get_if<bool>(&*stored)) return *isOn;
    if (const auto* number = std::get_if<std::int64_t>(&*stored)) return *number != 0;
    const auto* real = std::get_if<double>(&*stored);
    return real != nullptr && *real != 0;
}

std::optional<std::int64_t> UserDefaults::integer(std::string_view key) const {
    const auto stored = value(key);
    const auto* number = stored ? std::get_if<std::int64_t>(&*stored) : nullptr;
    return number == nullptr ? std::nullopt : std::optional(*number);
}

void UserDefaults::set(std::string_view key, const Value& value) {
    require(!std::holds_alternative<double>(value) || !std::isnan(std::get<double>(value)), "NaN is no setting");
    makeFolder(file());
    Connection connection(file(), Connection::Mode::write);
    if (connection.isEmpty()) connection.makeTable();
    {
        Connection::Statement write(connection,
                                    "INSERT INTO setting (key, kind, value) VALUES (?1, ?2, ?3)"
                                    " ON CONFLICT (key) DO UPDATE SET kind = excluded.kind, value = excluded.value");
        const Value kind(static_cast<std::int64_t>(value.index()));
        write.bind(1, key).bind(2, kind).bind(3, value).step();
    }
    connection.commit();
}

bool UserDefaults::remove(std::string_view key) {
    struct stat status {};
    if (::stat(file_.c_str(), &status) != 0 && (errno == ENOENT || errno == ENOTDIR)) return false;
    Connection connection(file(), Connection::Mode::write);
    if (connection.isEmpty()) return false;
    Connection::Statement(connection, "DELETE FROM setting WHERE key = ?1").bind(1, key).step();
    const bool isRemoved = connection.changes() > 0;
    connection.commit();
    return isRemoved;
}

}  // namespace corvex::inline v0
