#pragma once

#include "platform/workers/ImagingWorkerCodec.h"
#include "tests/support/Await.h"
#include "tests/support/SamplePictures.h"
#include "tests/support/TemporaryFolder.h"

#include <QFile>
#include <QProcess>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tessary::testing {

/// A codec with the real worker program, and a folder for the pictures.
class ImagingFixture : public ::testing::Test {
protected:
    [[nodiscard]] static ImagingWorkerCodec::Options options()
    {
        return {.program = QStringLiteral(TESSARY_IMAGING_PROGRAM)};
    }
    [[nodiscard]] ImagingWorkerCodec& codec() { return *m_codec; }
    void useCodec(ImagingWorkerCodec::Options changed)
    {
        m_codec.reset();
        m_codec = std::make_unique<ImagingWorkerCodec>(std::move(changed));
    }

    [[nodiscard]] QString file(const char* name) const { return m_folder.file(QString::fromLatin1(name)); }
    [[nodiscard]] QString write(const char* name, const QByteArray& bytes) const
    {
        QFile target(file(name));
        EXPECT_TRUE(target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size());
        return target.fileName();
    }
    /// A sample of a kind that only libvips writes; see SampleMaker.
    [[nodiscard]] QString make(const char* kind, const char* name, const QImage& image) const
    {
        const QString source = write("source.png", encoded(image, "png"));
        const QString target = file(name);
        EXPECT_EQ(QProcess::execute(QStringLiteral(TESSARY_SAMPLE_MAKER),
                                    {source, QString::fromLatin1(kind), target}),
                  0);
        return target;
    }
    [[nodiscard]] QStringList filesInFolder() const
    {
        return QDir(m_folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    /// The case of the ImageError that the task ends with; nothing when it succeeds.
    template <typename Value>
    static std::optional<ImageError::Case> failureOf(QCoro::Task<Value> task)
    {
        try {
            (void)await(std::move(task));
        } catch (const ImageError& error) {
            return error.which();
        }
        return std::nullopt;
    }

private:
    TemporaryFolder m_folder;
    std::unique_ptr<ImagingWorkerCodec> m_codec = std::make_unique<ImagingWorkerCodec>(options());
};

} // namespace tessary::testing
