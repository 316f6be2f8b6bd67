#pragma once

#include "base/KeyedGate.h"
#include "base/SerialLane.h"
#include "capture/FileFacts.h"
#include "capture/FileImport.h"
#include "capture/ForeignFile.h"
#include "capture/ImportEpochs.h"
#include "capture/ImportJournal.h"
#include "capture/ItemPictures.h"
#include "capture/SourceApplicationSnapshot.h"
#include "platform/Clock.h"
#include "store/AppPaths.h"
#include "store/SQLiteStore.h"

#include <functional>

namespace tessary {

/// Whether content that the library holds already counts as captured once more.
enum class CountDuplicate { No, Yes };

/// What came of a file, and which state of it was read.
struct TakenFile {
    FileImport import;
    FileStamp stamp;
};

/// Turns one captured thing into at most one new item of the library. To be called on the main thread; file
/// work happens on its lane, so that imports go on while another waits for its file to be complete.
class ScreenshotImporter {
public:
    using Record = std::optional<ScreenshotRecord>;

    ScreenshotImporter(AppPaths paths, SQLiteStore& store, ImageCodec& imageCodec, ApplicationIcons& icons,
                       Clock& clock);

    /// Imports copied text or a copied picture.
    /// @returns the new item; nothing when the library holds the content already, which is counted.
    /// @throws FileError (ReadCorruptFile for bytes that are no picture), StoreError, PersistenceError.
    [[nodiscard]] QCoro::Task<Record> importClipboardPayload(ClipboardPayload payload,
                                                             std::optional<SourceApplicationSnapshot> source);
    /// Imports a picture file, once it has stopped growing.
    /// @returns the new item; nothing for other kinds of files and for content that the library holds.
    /// @throws as above.
    [[nodiscard]] QCoro::Task<Record>
    importFile(QString path, std::optional<SourceApplicationSnapshot> source, CountDuplicate countDuplicate);
    /// The same for a file under any name and on a file system that may hang, and tells what came of it.
    /// The item is what the library's copy holds, should the file change meanwhile.
    /// @throws as above; Abandoned when it was given up.
    [[nodiscard]] QCoro::Task<TakenFile> takeFile(ForeignFile file,
                                                  std::optional<SourceApplicationSnapshot> source,
                                                  CountDuplicate countDuplicate);

    /// The library is about to be cleared: imports that are under way end without an item, a file or an
    /// error, and those that would begin wait until the hold is gone.
    [[nodiscard]] ImportEpochs::Hold forgetRunningImports() { return m_epochs.end(); }
    /// For others who bring items into the library.
    [[nodiscard]] ImportEpochs& epochs() { return m_epochs; }

    /// Once at start-up, before anything is imported: finishes or undoes what an earlier run left half done.
    /// Copied pictures whose temporary file is still there are imported, attributed by `sourceAt`.
    /// @returns whether the library changed. @throws nothing that concerns a single picture.
    [[nodiscard]] QCoro::Task<bool>
    recover(std::function<std::optional<SourceApplicationSnapshot>(Date)> sourceAt);

private:
    /// A file to import and the name it goes by, which differs for pictures copied within one second.
    struct Source {
        QString path;
        QString nominalPath;
        std::shared_ptr<ExpendableLane> lane; // where it is read
        std::stop_token giveUp;
        bool isForeign = false; // not ours alone to change
        ImportEpochs::Epoch epoch = 0;
    };
    /// What came of a picture.
    struct Taken {
        FileImport::Outcome outcome = FileImport::Outcome::NotAccepted;
        std::optional<QUuid> knownId; // of the item that holds the content already
        Record record;                // the new item
        FileStamp stamp;              // of the file as it was read
    };
    QCoro::Task<> undoInterrupted();
    QCoro::Task<bool> recoverPicture(QString fileName, std::optional<SourceApplicationSnapshot> application);
    QCoro::Task<Record> importText(QString text, std::optional<SourceApplicationSnapshot> application,
                                   ImportEpochs::Epoch epoch);
    QCoro::Task<Record> importTemporary(Source source, QByteArray bytes,
                                        std::optional<SourceApplicationSnapshot> application);
    /// Its result, or an empty one once the import is to leave nothing behind.
    template <typename Result>
    QCoro::Task<Result> unlessForgotten(ImportEpochs::Epoch epoch, QCoro::Task<Result> import);
    QCoro::Task<Taken> importSource(Source source, std::optional<SourceApplicationSnapshot> application,
                                    CountDuplicate countDuplicate);
    QCoro::Task<std::optional<QUuid>> countIfKnown(QString hash, CountDuplicate countDuplicate);
    QCoro::Task<Taken> addImage(Source source, ScreenshotRecord record,
                                std::optional<SourceApplicationSnapshot> application,
                                CountDuplicate countDuplicate, std::shared_ptr<KeyedGate::Pass> pass);
    QCoro::Task<Taken> addForeign(Source source, ScreenshotRecord record,
                                  std::optional<SourceApplicationSnapshot> application,
                                  CountDuplicate countDuplicate, std::shared_ptr<KeyedGate::Pass> pass);
    QCoro::Task<Record> addOwn(Source source, ScreenshotRecord record,
                               std::optional<SourceApplicationSnapshot> application);
    QCoro::Task<Record> insertImage(ScreenshotRecord record, FileFacts facts,
                                    std::optional<SourceApplicationSnapshot> application,
                                    ImportEpochs::Epoch epoch);
    QCoro::Task<bool> insertOrDiscard(ScreenshotRecord record, ImportEpochs::Epoch epoch);
    QCoro::Task<> waitUntilStable(Source source);
    [[nodiscard]] Source ownSource(const QString& path, ImportEpochs::Epoch epoch) const;
    [[nodiscard]] Source claimTemporary(ImportEpochs::Epoch epoch);

    AppPaths m_paths;
    SQLiteStore& m_store;
    Clock& m_clock;
    ImportJournal m_journal;
    ImportEpochs m_epochs;
    KeyedGate m_hashes;           // content being imported
    QStringList m_temporaryPaths; // in use by imports of copied pictures
    ItemPictures m_pictures;
    std::shared_ptr<ExpendableLane> m_reader; // of our own files
    SerialLane m_lane;
};

} // namespace tessary
