#pragma once

#include "platform/Clock.h"
#include "search/LibraryChange.h"
#include "search/ListRequest.h"
#include "store/ScreenshotRecord.h"

#include <QObject>

#include <qcoro/qcorotask.h>

#include <stop_token>

namespace tessary {

/// What the search model may ask of the rest of the program. Main thread only.
class LibraryActions : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] virtual Clock& clock() = 0;
    /// Nothing when there is no library. When `stop` is requested the page is of no use any more: it is
    /// given up as soon as possible and the answer, or error, means nothing. @throws StoreError.
    [[nodiscard]] virtual QCoro::Task<QList<ScreenshotRecord>> search(ListRequest request,
                                                                      std::stop_token stop) = 0;
    /// @throws StoreError.
    [[nodiscard]] virtual QCoro::Task<LibraryFacets> facets() = 0;
    /// Puts the item, whole even where the record's text was cut, on the clipboard, and pastes it.
    [[nodiscard]] virtual QCoro::Task<> copy(ScreenshotRecord record, bool pasteIntoPreviousApplication) = 0;
    [[nodiscard]] virtual QCoro::Task<> toggleFavorite(ScreenshotRecord record) = 0;
    [[nodiscard]] virtual QCoro::Task<> togglePinned(ScreenshotRecord record) = 0;
    [[nodiscard]] virtual QCoro::Task<> moveToTrash(ScreenshotRecord record) = 0;
    /// Tells the person.
    virtual void reportFailure(const QString& message) = 0;

Q_SIGNALS:
    /// The library's content changed ("TessaryLibraryDidChange").
    void libraryChanged(const tessary::LibraryChange& change = {});
};

} // namespace tessary
