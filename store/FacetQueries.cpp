#include "store/FacetQueries.h"

namespace tessary {

const char kSourceAppNamesQuery[] = R"(WITH RECURSIVE names(name) AS (
    SELECT min(source_app_name) FROM screenshots WHERE is_deleted = 0
    UNION ALL
    SELECT (SELECT min(source_app_name) FROM screenshots WHERE is_deleted = 0 AND source_app_name > name)
    FROM names WHERE name IS NOT NULL
)
SELECT name FROM names WHERE name IS NOT NULL AND length(trim(name)) > 0
ORDER BY name COLLATE NOCASE, name)";

const char kTagListsQuery[] = R"(WITH RECURSIVE lists(list) AS (
    SELECT min(tags_json) FROM screenshots WHERE is_deleted = 0 AND tags_json <> '[]'
    UNION ALL
    SELECT (SELECT min(tags_json) FROM screenshots
            WHERE is_deleted = 0 AND tags_json <> '[]' AND tags_json > list)
    FROM lists WHERE list IS NOT NULL
)
SELECT list FROM lists WHERE list IS NOT NULL)";

} // namespace tessary
