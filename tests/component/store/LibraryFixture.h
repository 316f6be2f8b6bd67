#pragma once

#include "store/SQLiteStore.h"
#include "tests/support/Await.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary::testing {

/// A library of its own and the pages of its lists, which tests compare by the items' file names.
class LibraryFixture : public ::testing::Test {
protected:
    static constexpr double kNow = 1'714'561'200.5; // 2024-05-01 19:00 in Shanghai

    [[nodiscard]] QString databasePath() const { return m_folder.file(QStringLiteral("Tessary.sqlite3")); }
    [[nodiscard]] QString projectionPath() const { return SQLiteStore::projectionPath(databasePath()); }

    /// A text item of that name, captured that many seconds before now.
    [[nodiscard]] static ScreenshotRecord item(const QString& name, double age = 100)
    {
        ScreenshotRecord record = textRecord(name, kNow - age);
        record.generatedTitle.reset();
        return record;
    }
    void add(const ScreenshotRecord& record) { ASSERT_TRUE(await(store->insert(record))); }

    [[nodiscard]] static ListRequest request(const QString& text,
                                             ScreenshotScope scope = ScreenshotScope::All,
                                             ScreenshotSort sort = ScreenshotSort::Newest)
    {
        ListRequest request;
        request.rawQuery = text;
        request.scope = scope;
        request.sort = sort;
        request.now = Date{kNow};
        request.calendar = Calendar{QTimeZone("Asia/Shanghai")};
        return request;
    }
    /// The names on a page, joined with spaces.
    [[nodiscard]] std::string listed(const ListRequest& request)
    {
        QStringList names;
        for (const ScreenshotRecord& record : await(store->search(request)))
            names.append(record.filename);
        return names.join(u' ').toStdString();
    }
    [[nodiscard]] std::string found(const QString& text) { return listed(request(text)); }
    [[nodiscard]] std::string listed(ScreenshotScope scope, ScreenshotSort sort = ScreenshotSort::Newest)
    {
        return listed(request(QString(), scope, sort));
    }

private:
    TemporaryFolder m_folder;

protected:
    std::unique_ptr<SQLiteStore> store = await(SQLiteStore::open(databasePath()));
};

} // namespace tessary::testing
