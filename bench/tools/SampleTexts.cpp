#include "bench/tools/SampleTexts.h"

#include <QDir>
#include <QFile>

#include <array>
#include <cmath>

namespace tessary::bench {
namespace {

constexpr double kShortest = 10;
constexpr double kLongest = 2000;
constexpr qsizetype kEnoughWords = 200'000;

constexpr std::array kSentences{
    u"今天下午三点在二楼会议室开会，请大家提前十分钟到场。",
    u"上海这几天一直在下雨，出门记得带伞。",
    u"这份合同的第七条还需要法务再看一遍，签字日期先空着。",
    u"快递放在门口的柜子里了，取件码稍后发给你。",
    u"重庆的火锅比成都的更辣一些，不过味道都很好。",
    u"请把上个月的发票扫描后发到财务邮箱，抬头写公司全称。",
    u"服务器昨晚重启过一次，日志里没有发现异常。",
    u"孩子的家长会改到周五晚上七点，班主任会介绍期末安排。",
    u"这本书的翻译相当流畅，只是注释少了一点。",
    u"高铁票已经订好了，早上八点二十从杭州东站出发。",
    u"数据库的索引建好以后，查询时间从两秒降到了二十毫秒。",
    u"如果明天天气好，我们就去香山看红叶。",
    u"银行卡号和密码不要通过聊天软件发送。",
    u"设计稿里按钮的圆角是八像素，阴影再淡一点会更好看。",
    u"医生建议每天走六千步，少吃油炸和太甜的东西。",
    u"新版本修复了复制大图片时偶尔失败的问题。",
    u"《红楼梦》里的诗词，每一首都与人物的命运有关。",
    u"仓库还剩三十二箱货，月底之前要全部发完。",
    u"麻烦把投影仪的遥控器放回抽屉，谢谢！",
    u"他说的“差不多”，往往意味着还差得很远。",
    u"实验结果与预期基本一致，误差在百分之三以内。",
    u"周末去看房，中介说朝南的那套已经有人交了定金。",
    u"請把繁體字的版本也一併寄給台北的同事。",
    u"乘坐地铁二号线到人民广场站，从九号口出来往右走。",
};

constexpr std::array kLines{
    u"for (const auto& [key, value] : settings) {",
    u"    if (value.isEmpty())\n        continue;",
    u"    std::sort(items.begin(), items.end(), byDate);",
    u"}",
    u"def load(path):\n    with open(path, encoding=\"utf-8\") as stream:\n        return json.load(stream)",
    u"SELECT id, title FROM notes WHERE created_at > ?1 ORDER BY created_at DESC LIMIT 50;",
    u"git log --oneline --since=2.weeks | grep -i fix",
    u"const response = await fetch(`/api/items/${id}`, { method: 'PUT', body: JSON.stringify(item) });",
    u"<div class=\"card\"><h2>{{ title }}</h2><p>{{ summary }}</p></div>",
    u"    # 先检查缓存，没有再读文件",
    u"export PATH=\"$HOME/.local/bin:$PATH\"",
    u"    return std::nullopt; // nothing to do",
    u"docker run --rm -it -v \"$PWD\":/src -w /src debian:12 bash",
    u"https://www.example.org/articles/2024/05/17/index.html?page=3&sort=new#comments",
};

void collectWords(const QString& path, QStringList& words)
{
    QFile file(path);
    if (words.size() < kEnoughWords && file.open(QIODevice::ReadOnly))
        words += QString::fromUtf8(file.readAll()).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

QStringList installedWords()
{
    QStringList words;
    const QDir licences(QStringLiteral("/usr/share/common-licenses"));
    for (const QString& name : licences.entryList(QDir::Files | QDir::NoSymLinks, QDir::Name))
        collectWords(licences.filePath(name), words);
    const QDir documents(QStringLiteral("/usr/share/doc"));
    for (const QString& name : documents.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        collectWords(documents.filePath(name + QStringLiteral("/copyright")), words);
    if (words.isEmpty())
        qFatal("There is no English text in /usr/share/common-licenses and /usr/share/doc");
    return words;
}

} // namespace

SampleTexts::SampleTexts(quint64 seed) : m_random(seed), m_words(installedWords()) {}

qsizetype SampleTexts::below(qsizetype limit)
{
    return static_cast<qsizetype>(m_random() % static_cast<quint64>(limit));
}

QString SampleTexts::chinese(qsizetype length)
{
    QString text;
    while (text.size() < length)
        text += QString::fromUtf16(kSentences.at(static_cast<size_t>(below(kSentences.size()))));
    text.truncate(length);
    return text;
}

QString SampleTexts::english(qsizetype length)
{
    QString text;
    for (qsizetype word = below(m_words.size()); text.size() < length; ++word)
        text += m_words.at(word % m_words.size()) + QLatin1Char(' ');
    text.truncate(length);
    return text;
}

QString SampleTexts::code(qsizetype length)
{
    QString text;
    while (text.size() < length)
        text += QString::fromUtf16(kLines.at(static_cast<size_t>(below(kLines.size())))) + QLatin1Char('\n');
    text.truncate(length);
    return text;
}

QString SampleTexts::mixed(qsizetype length)
{
    constexpr qsizetype kPart = 40;
    QString text;
    while (text.size() < length)
        text += chinese(1 + below(kPart)) + QLatin1Char(' ') + english(1 + below(kPart)) + QLatin1Char('\n');
    text.truncate(length);
    return text;
}

QString SampleTexts::next()
{
    const double share = std::generate_canonical<double, 32>(m_random);
    const auto length = static_cast<qsizetype>(kShortest * std::pow(kLongest / kShortest, share));
    const QString number = QStringLiteral("%1 ").arg(++m_number);
    switch (below(10)) {
    case 0:
    case 1:
    case 2:
    case 3:
        return number + chinese(length);
    case 4:
    case 5:
    case 6:
        return number + english(length).trimmed();
    case 7:
        return number + mixed(length).trimmed();
    default:
        return number + code(length).trimmed();
    }
}

} // namespace tessary::bench
