#pragma once

#include "search/ListRequest.h"
#include "search/SearchQuery.h"
#include "store/sqlite/SQLiteValue.h"

#include <QByteArrayList>
#include <QList>

namespace tessary {

/// One page of one list as a query of the projection, whose rows have the order of `kProjectionColumns`.
struct ListQuery {
    QByteArray sql;
    QList<SQLiteValue> bindings;
};

/// What was typed and what was chosen, taken apart and assembled to the query that defines the page. Any
/// thread. @throws StoreError (Prepare) for more than 4,000 words.
[[nodiscard]] ListQuery listQuery(const ListRequest& request);

/// What each row of a list satisfies, to be joined by AND, with the values of its parameters.
struct ListConditions {
    QByteArrayList texts;
    QList<SQLiteValue> bindings;

    void add(const QByteArray& text) { texts.append(text); }
    void add(const QByteArray& text, const SQLiteValue& value)
    {
        texts.append(text);
        bindings.append(value);
    }
};

// The pieces of that query, for whoever finds the same rows by other ways.

/// What the query asks for besides texts: dates, favourites, and the scope. About a row called `s`.
[[nodiscard]] ListConditions rangeConditions(const SearchQuery& query, const ListRequest& request);
[[nodiscard]] QByteArray orderText(ScreenshotSort sort);
/// What LIKE is asked for where a text has to hold what was typed; `%` and `_` in it keep their meaning.
[[nodiscard]] QString likePattern(const QString& text);
/// What the full-text table is asked for: a phrase whose last word may go on, or one without words.
[[nodiscard]] QString fullTextQuery(QString keyword);

} // namespace tessary
