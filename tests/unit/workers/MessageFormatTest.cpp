#include "workers/MessageFormat.h"

#include <QCborArray>
#include <QCborValue>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace tessary {
namespace {

using namespace std::chrono_literals;

class Pipe {
public:
    explicit Pipe(int flags = O_CLOEXEC)
    {
        if (::pipe2(m_ends.data(), flags) != 0)
            m_ends = {-1, -1};
    }
    ~Pipe()
    {
        closeReadEnd();
        closeWriteEnd();
    }
    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }
    void closeReadEnd() { closeEnd(m_ends[0]); }
    void closeWriteEnd() { closeEnd(m_ends[1]); }
    void put(const QByteArray& bytes)
    {
        ASSERT_EQ(::write(writeEnd(), bytes.data(), size_t(bytes.size())), bytes.size());
    }

private:
    static void closeEnd(int& end)
    {
        if (end >= 0)
            ::close(std::exchange(end, -1));
    }
    std::array<int, 2> m_ends{-1, -1};
};

template <typename Action>
std::optional<MessageError::Case> failureOf(Action action)
{
    try {
        action();
    } catch (const MessageError& error) {
        return error.which();
    }
    return std::nullopt;
}

QByteArray framed(const QByteArray& payload)
{
    const auto size = quint32(payload.size());
    QByteArray bytes;
    for (const int shift : {24, 16, 8, 0})
        bytes.append(char(size >> shift & 0xff));
    return bytes + payload;
}

std::optional<MessageError::Case> failureOfReading(const QByteArray& bytes)
{
    Pipe pipe;
    pipe.put(bytes);
    pipe.closeWriteEnd();
    return failureOf([&] { (void)readMessage(pipe.readEnd(), messageDeadlineIn(5s)); });
}

TEST(MessageFormatTest, ReadsWhatWasWritten)
{
    Pipe pipe;
    const QCborMap message{{QStringLiteral("名"), QByteArray("\0\1\2", 3)}, {QStringLiteral("n"), -7}};
    writeMessage(pipe.writeEnd(), message, std::nullopt);
    writeMessage(pipe.writeEnd(), QCborMap(), std::nullopt);
    EXPECT_EQ(readMessage(pipe.readEnd(), std::nullopt), message);
    EXPECT_EQ(readMessage(pipe.readEnd(), std::nullopt), QCborMap());
}

TEST(MessageFormatTest, PutsTheLengthFirstInBigEndianOrder)
{
    Pipe pipe;
    writeMessage(pipe.writeEnd(), {{QStringLiteral("k"), 1}}, std::nullopt);
    std::array<char, 16> bytes{};
    ASSERT_EQ(::read(pipe.readEnd(), bytes.data(), bytes.size()), 8);
    EXPECT_EQ(QByteArray(bytes.data(), 8), QByteArray::fromHex("00000004a1616b01"));
}

TEST(MessageFormatTest, CarriesMoreThanThePipeHoldsInBothModes)
{
    for (const int flags : {O_CLOEXEC, O_CLOEXEC | O_NONBLOCK}) {
        Pipe pipe(flags);
        const QCborMap message{{QStringLiteral("bytes"), QByteArray(3'000'000, 'x')}};
        std::optional<QCborMap> received;
        std::jthread reader([&] { received = readMessage(pipe.readEnd(), messageDeadlineIn(20s)); });
        writeMessage(pipe.writeEnd(), message, messageDeadlineIn(20s));
        reader.join();
        EXPECT_EQ(received, message);
    }
}

TEST(MessageFormatTest, TakesAnEndBetweenMessagesAsNoMessage)
{
    Pipe pipe;
    pipe.closeWriteEnd();
    EXPECT_EQ(readMessage(pipe.readEnd(), std::nullopt), std::nullopt);
}

TEST(MessageFormatTest, RefusesAMessageThatEndsTooSoon)
{
    const QByteArray whole = framed(QCborValue(QCborMap{{QStringLiteral("key"), 5}}).toCbor());
    for (qsizetype length = 1; length < whole.size(); ++length)
        EXPECT_EQ(failureOfReading(whole.left(length)), MessageError::Case::Truncated) << length;
}

TEST(MessageFormatTest, RefusesALengthOverTheCapWithoutWaitingForTheRest)
{
    EXPECT_EQ(failureOfReading(QByteArray::fromHex("25800001")), MessageError::Case::Oversized);
    EXPECT_EQ(failureOfReading(QByteArray::fromHex("ffffffff")), MessageError::Case::Oversized);
    EXPECT_EQ(failureOfReading(QByteArray::fromHex("25800000")), MessageError::Case::Truncated);
}

TEST(MessageFormatTest, RefusesWhatIsNotExactlyOneMap)
{
    const QByteArray map = QCborValue(QCborMap{{QStringLiteral("k"), 1}}).toCbor();
    EXPECT_EQ(failureOfReading(framed({})), MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(QCborValue(QCborArray{1, 2}).toCbor())), MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(map + '\0')), MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(map.chopped(1))), MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(QByteArray(100, '\xff'))), MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(QByteArray(100'000, '\xa1').left(50'000))),
              MessageError::Case::Malformed);
}

TEST(MessageFormatTest, RefusesByteStringsThatPromiseMoreThanThereIs)
{
    EXPECT_EQ(failureOfReading(framed(QByteArray::fromHex("a1616b5b7fffffffffffffff00"))),
              MessageError::Case::Malformed);
    EXPECT_EQ(failureOfReading(framed(QByteArray::fromHex("bb7fffffffffffffff"))),
              MessageError::Case::Malformed);
}

TEST(MessageFormatTest, EndsWaitingAtTheDeadline)
{
    Pipe pipe(O_CLOEXEC | O_NONBLOCK);
    EXPECT_FALSE(waitForMessage(pipe.readEnd(), messageDeadlineIn(1ms)));
    EXPECT_EQ(failureOf([&] { (void)readMessage(pipe.readEnd(), messageDeadlineIn(1ms)); }),
              MessageError::Case::TimedOut);
    pipe.put(QByteArray::fromHex("000000"));
    EXPECT_EQ(failureOf([&] { (void)readMessage(pipe.readEnd(), messageDeadlineIn(1ms)); }),
              MessageError::Case::TimedOut);
}

TEST(MessageFormatTest, EndsWritingAtTheDeadlineWhenNobodyReads)
{
    const QCborMap message{{QStringLiteral("bytes"), QByteArray(3'000'000, 'x')}};
    for (const int flags : {O_CLOEXEC, O_CLOEXEC | O_NONBLOCK}) {
        Pipe pipe(flags);
        EXPECT_EQ(failureOf([&] { writeMessage(pipe.writeEnd(), message, messageDeadlineIn(20ms)); }),
                  MessageError::Case::TimedOut);
    }
}

TEST(MessageFormatTest, ReportsAReaderThatHasGoneWithoutDyingOfIt)
{
    Pipe pipe;
    pipe.closeReadEnd();
    ASSERT_EQ(::signal(SIGPIPE, SIG_DFL), SIG_DFL) << "the test needs the deadly disposition";
    EXPECT_EQ(failureOf([&] { writeMessage(pipe.writeEnd(), QCborMap(), std::nullopt); }),
              MessageError::Case::Closed);
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(sigismember(&pending, SIGPIPE), 0);
}

TEST(MessageFormatTest, ReportsADescriptorThatIsNone)
{
    EXPECT_EQ(failureOf([] { (void)readMessage(-1, std::nullopt); }), MessageError::Case::System);
    EXPECT_EQ(failureOf([] { writeMessage(-1, QCborMap(), std::nullopt); }), MessageError::Case::System);
}

TEST(MessageFormatTest, GoesOnAfterASignal)
{
    struct sigaction action {};
    action.sa_handler = [](int) {};
    struct sigaction previous {};
    ::sigaction(SIGUSR1, &action, &previous);
    Pipe pipe;
    std::atomic<bool> ended = false;
    std::jthread reader([&] {
        EXPECT_EQ(readMessage(pipe.readEnd(), messageDeadlineIn(20s)), QCborMap());
        ended = true;
    });
    for (int i = 0; i < 50; ++i)
        ::pthread_kill(reader.native_handle(), SIGUSR1);
    EXPECT_FALSE(ended);
    writeMessage(pipe.writeEnd(), QCborMap(), std::nullopt);
    reader.join();
    ::sigaction(SIGUSR1, &previous, nullptr);
}

/// Any bytes either are a map or a typed error; random ones and damaged good ones.
TEST(MessageFormatTest, SurvivesRandomAndDamagedPayloads)
{
    QRandomGenerator random(20240501);
    const QByteArray good = QCborValue(QCborMap{{QStringLiteral("path"), QStringLiteral("/图/片.png")},
                                                {QStringLiteral("list"), QCborArray{1, 2.5, true, {}}},
                                                {QStringLiteral("bytes"), QByteArray(40, 'b')}})
                                .toCbor();
    int parsed = 0;
    int refused = 0;
    for (int round = 0; round < 20'000; ++round) {
        QByteArray payload = good;
        if (round % 2 == 0) {
            payload.resize(random.bounded(64));
            random.generate(payload.begin(), payload.end());
        } else {
            for (int change = random.bounded(4); change >= 0; --change)
                payload[random.bounded(int(payload.size()))] = char(random.bounded(256));
            payload.truncate(payload.size() - random.bounded(3));
        }
        const auto failure = failureOf([&] { (void)parseMessage(payload); });
        failure ? ++refused : ++parsed;
        EXPECT_TRUE(!failure || failure == MessageError::Case::Malformed);
    }
    EXPECT_GT(parsed, 100);
    EXPECT_GT(refused, 5'000);
}

} // namespace
} // namespace tessary
