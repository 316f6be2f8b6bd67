#include "store/ScreenshotRecord.h"

#include <QJsonArray>

#include <cmath>

namespace tessary {
namespace {

/// Reads the members of a JSON object and remembers whether one was missing or of the wrong kind.
class ObjectReader {
public:
    explicit ObjectReader(const QJsonObject& object) : m_object(object) {}

    [[nodiscard]] bool isValid() const { return m_valid; }

    void read(const char* key, QString& value)
    {
        if (const QJsonValue found = required(key, QJsonValue::String); m_valid)
            value = found.toString();
    }
    void read(const char* key, std::optional<QString>& value)
    {
        const QJsonValue found = m_object.value(QLatin1String(key));
        if (found.isString())
            value = found.toString();
        else if (!found.isUndefined() && !found.isNull())
            m_valid = false;
    }
    void read(const char* key, bool& value)
    {
        if (const QJsonValue found = required(key, QJsonValue::Bool); m_valid)
            value = found.toBool();
    }
    void read(const char* key, qint64& value)
    {
        const QJsonValue found = required(key, QJsonValue::Double);
        if (m_valid && found.toDouble() == std::floor(found.toDouble()))
            value = found.toInteger();
        else
            m_valid = false;
    }
    void read(const char* key, Date& value)
    {
        if (const QJsonValue found = required(key, QJsonValue::Double); m_valid)
            value = Date{found.toDouble()};
    }
    void read(const char* key, std::optional<Date>& value)
    {
        const QJsonValue found = m_object.value(QLatin1String(key));
        if (found.isDouble())
            value = Date{found.toDouble()};
        else if (!found.isUndefined() && !found.isNull())
            m_valid = false;
    }
    void read(const char* key, QUuid& value)
    {
        QString text;
        read(key, text);
        value = QUuid::fromString(text);
        m_valid = m_valid && !value.isNull();
    }
    void read(const char* key, QStringList& value)
    {
        const QJsonValue found = required(key, QJsonValue::Array);
        for (const auto& element : found.toArray()) {
            m_valid = m_valid && element.isString();
            value.append(element.toString());
        }
    }
    template <typename Enumeration>
    void read(const char* key, Enumeration& value, std::optional<Enumeration> (*fromRaw)(qint64))
    {
        qint64 raw = 0;
        read(key, raw);
        const std::optional<Enumeration> found = fromRaw(raw);
        m_valid = m_valid && found.has_value();
        if (m_valid)
            value = *found;
    }

private:
    QJsonValue required(const char* key, QJsonValue::Type type)
    {
        const QJsonValue found = m_object.value(QLatin1String(key));
        m_valid = m_valid && found.type() == type;
        return found;
    }

    const QJsonObject& m_object;
    bool m_valid = true;
};

void write(QJsonObject& object, const char* key, const std::optional<QString>& value)
{
    if (value)
        object.insert(QLatin1String(key), *value);
}

void write(QJsonObject& object, const char* key, const std::optional<Date>& value)
{
    if (value)
        object.insert(QLatin1String(key), value->secondsSince1970);
}

} // namespace

std::optional<ClipboardContentType> clipboardContentType(qint64 rawValue)
{
    if (rawValue < 0 || rawValue > static_cast<qint64>(ClipboardContentType::Text))
        return std::nullopt;
    return static_cast<ClipboardContentType>(rawValue);
}

std::optional<OCRStatus> ocrStatus(qint64 rawValue)
{
    if (rawValue < 0 || rawValue > static_cast<qint64>(OCRStatus::Paused))
        return std::nullopt;
    return static_cast<OCRStatus>(rawValue);
}

QString ScreenshotRecord::searchableText() const
{
    return QStringList{textContent, sourceAppName.value_or(QString()), tags.join(QLatin1Char(' ')), note,
                       filename}
        .join(QLatin1Char(' '));
}

size_t qHash(const ScreenshotRecord& r, size_t seed) noexcept
{
    const auto textOf = [](const std::optional<QString>& text) { return text.value_or(QString()); };
    const auto dateOf = [](const std::optional<Date>& date) { return date.value_or(Date{}); };
    return qHashMulti(seed, r.id, r.contentHash, r.filename, r.fileType, r.originalPath, r.libraryPath,
                      textOf(r.thumbnailPath), r.capturedAt, r.importedAt, r.pixelWidth, r.pixelHeight,
                      r.fileSize, textOf(r.sourceAppName), textOf(r.sourceBundleIdentifier),
                      textOf(r.sourceAppIconPath), r.ocrText, static_cast<int>(r.ocrStatus),
                      textOf(r.generatedTitle), r.tags, r.note, r.isFavorite, r.isPinned, r.duplicateCount,
                      static_cast<int>(r.contentType), r.textContent, dateOf(r.lastUsedAt), r.isDeleted,
                      dateOf(r.deletedAt));
}

QJsonObject encodeRecord(const ScreenshotRecord& r)
{
    QJsonObject object{
        {QStringLiteral("id"), identifierText(r.id)},
        {QStringLiteral("contentHash"), r.contentHash},
        {QStringLiteral("filename"), r.filename},
        {QStringLiteral("fileType"), r.fileType},
        {QStringLiteral("originalPath"), r.originalPath},
        {QStringLiteral("libraryPath"), r.libraryPath},
        {QStringLiteral("capturedAt"), r.capturedAt.secondsSince1970},
        {QStringLiteral("importedAt"), r.importedAt.secondsSince1970},
        {QStringLiteral("pixelWidth"), r.pixelWidth},
        {QStringLiteral("pixelHeight"), r.pixelHeight},
        {QStringLiteral("fileSize"), r.fileSize},
        {QStringLiteral("ocrText"), r.ocrText},
        {QStringLiteral("ocrStatus"), static_cast<int>(r.ocrStatus)},
        {QStringLiteral("tags"), QJsonArray::fromStringList(r.tags)},
        {QStringLiteral("note"), r.note},
        {QStringLiteral("isFavorite"), r.isFavorite},
        {QStringLiteral("isPinned"), r.isPinned},
        {QStringLiteral("duplicateCount"), r.duplicateCount},
        {QStringLiteral("contentType"), static_cast<int>(r.contentType)},
        {QStringLiteral("textContent"), r.textContent},
        {QStringLiteral("isDeleted"), r.isDeleted},
    };
    write(object, "thumbnailPath", r.thumbnailPath);
    write(object, "sourceAppName", r.sourceAppName);
    write(object, "sourceBundleIdentifier", r.sourceBundleIdentifier);
    write(object, "sourceAppIconPath", r.sourceAppIconPath);
    write(object, "generatedTitle", r.generatedTitle);
    write(object, "lastUsedAt", r.lastUsedAt);
    write(object, "deletedAt", r.deletedAt);
    return object;
}

QJsonObject encodeWholeRecord(const ScreenshotRecord& record)
{
    QJsonObject object = encodeRecord(record);
    for (const char* key : {"thumbnailPath", "sourceAppName", "sourceBundleIdentifier", "sourceAppIconPath",
                            "generatedTitle", "lastUsedAt", "deletedAt"}) {
        if (!object.contains(QLatin1String(key)))
            object.insert(QLatin1String(key), QJsonValue::Null);
    }
    return object;
}

std::optional<ScreenshotRecord> decodeRecord(const QJsonObject& object)
{
    ScreenshotRecord r;
    ObjectReader reader(object);
    reader.read("id", r.id);
    reader.read("contentHash", r.contentHash);
    reader.read("filename", r.filename);
    reader.read("fileType", r.fileType);
    reader.read("originalPath", r.originalPath);
    reader.read("libraryPath", r.libraryPath);
    reader.read("thumbnailPath", r.thumbnailPath);
    reader.read("capturedAt", r.capturedAt);
    reader.read("importedAt", r.importedAt);
    reader.read("pixelWidth", r.pixelWidth);
    reader.read("pixelHeight", r.pixelHeight);
    reader.read("fileSize", r.fileSize);
    reader.read("sourceAppName", r.sourceAppName);
    reader.read("sourceBundleIdentifier", r.sourceBundleIdentifier);
    reader.read("sourceAppIconPath", r.sourceAppIconPath);
    reader.read("ocrText", r.ocrText);
    reader.read("ocrStatus", r.ocrStatus, &ocrStatus);
    reader.read("generatedTitle", r.generatedTitle);
    reader.read("tags", r.tags);
    reader.read("note", r.note);
    reader.read("isFavorite", r.isFavorite);
    reader.read("isPinned", r.isPinned);
    reader.read("duplicateCount", r.duplicateCount);
    reader.read("contentType", r.contentType, &clipboardContentType);
    reader.read("textContent", r.textContent);
    reader.read("lastUsedAt", r.lastUsedAt);
    reader.read("isDeleted", r.isDeleted);
    reader.read("deletedAt", r.deletedAt);
    if (!reader.isValid())
        return std::nullopt;
    return r;
}

QString identifierText(const QUuid& id)
{
    return id.toString(QUuid::WithoutBraces).toUpper();
}

} // namespace tessary
