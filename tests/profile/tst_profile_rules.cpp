// The profile's pure rules: the stored photo's size and encoding, reading picked files and the
// skills a role change starts with.
#include "ProfilePhotoEncoder.h"
#include "ProfilePhotoReader.h"
#include "RoleChange.h"
#include "SkillLists.h"

#include <QBuffer>
#include <QDir>
#include <QImageReader>
#include <QPainter>
#include <QTemporaryDir>
#include <QTest>

namespace {

QImage photo(int width, int height)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.fillRect(QRect(0, 0, width / 2, height), QColor(200, 40, 40));
    painter.fillRect(QRect(width / 2, 0, width - width / 2, height / 2), QColor(40, 40, 200));
    return image;
}

} // namespace

class TestProfileRules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void storedPhotoSize_data()
    {
        QTest::addColumn<QSize>("source");
        QTest::addColumn<QSize>("stored");
        QTest::newRow("landscape") << QSize(1200, 800) << QSize(600, 400);
        QTest::newRow("height rounded up") << QSize(7, 3) << QSize(600, 258);
        QTest::newRow("portrait") << QSize(300, 1000) << QSize(600, 2000);
        QTest::newRow("already 600 wide") << QSize(600, 450) << QSize(600, 450);
        QTest::newRow("a thin strip keeps one row") << QSize(5000, 1) << QSize(600, 1);
    }
    void storedPhotoSize()
    {
        QFETCH(QSize, source);
        QFETCH(QSize, stored);
        const QByteArray jpeg = ProfilePhotoEncoder::encode(photo(source.width(), source.height()));
        QVERIFY(jpeg.startsWith("\xff\xd8\xff"));
        QImage decoded;
        QVERIFY(decoded.loadFromData(jpeg, "JPEG"));
        QCOMPARE(decoded.size(), stored);
    }

    void photoIsJpegOfQualityFifty()
    {
        const QImage source = photo(900, 700);
        const QByteArray jpeg = ProfilePhotoEncoder::encode(source);
        auto encodedAt = [&](int quality) {
            QByteArray bytes;
            QBuffer buffer(&bytes);
            buffer.open(QIODevice::WriteOnly);
            ProfilePhotoEncoder::scaled(source).save(&buffer, "JPEG", quality);
            return bytes;
        };
        QCOMPARE(jpeg, encodedAt(50));
        QVERIFY(jpeg != encodedAt(75));
        QVERIFY(jpeg != encodedAt(25));
    }

    void pickedFiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("content"); // written to the file unless its path is absolute
        QTest::addColumn<bool>("accepted");
        QTest::newRow("missing file") << "/nonexistent/photo.jpg" << QByteArray() << false;
        QTest::newRow("text file") << "notes.jpg" << QByteArray("these are not pixels") << false;
        QTest::newRow("empty file") << "empty.png" << QByteArray() << false;
        QTest::newRow("cut-off PNG") << "cut.png" << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16) << false;
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        photo(40, 30).save(&buffer, "PNG");
        QTest::newRow("small PNG") << "small.png" << png << true;
        QByteArray strip;
        QBuffer stripBuffer(&strip);
        stripBuffer.open(QIODevice::WriteOnly);
        photo(10, 101).save(&stripBuffer, "PNG");
        QTest::newRow("narrow strip") << "strip.png" << strip << false;
    }
    void pickedFiles()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, content);
        QFETCH(bool, accepted);
        QTemporaryDir dir;
        QFile out(dir.filePath(file));
        if (!QDir::isAbsolutePath(file)) {
            QVERIFY(out.open(QIODevice::WriteOnly));
            out.write(content);
            out.close();
        }
        const ProfilePhotoReader::Result result = ProfilePhotoReader::read(out.fileName());
        QCOMPARE(!result.image.isNull(), accepted);
        QCOMPARE(result.error.isEmpty(), accepted);
    }

    void hugePictureIsReducedWhileDecoding_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("JPEG") << QByteArray("JPEG");
        QTest::newRow("PNG") << QByteArray("PNG");
    }
    void hugePictureIsReducedWhileDecoding()
    {
        QFETCH(QByteArray, format);
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("huge.") + QString::fromLatin1(format).toLower());
        QVERIFY(photo(4800, 3200).save(path, format.constData()));
        const ProfilePhotoReader::Result result = ProfilePhotoReader::read(path);
        QVERIFY2(result.error.isEmpty(), qPrintable(result.error));
        QCOMPARE(result.image.size(), QSize(ProfilePhotoReader::kMaximumSide, 800));
    }

    void startingSkills_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("skills");
        const QStringList both = SkillLists::broadcastSkills() + SkillLists::printSkills();
        QTest::newRow("Multi-Skilled") << "Multi-Skilled" << both;
        QTest::newRow("multi-skilled, other case") << "MULTI-skilled" << both;
        QTest::newRow("Citizen Journalist") << "Citizen Journalist" << QStringList{"User-Generator/Live-Streamer"};
        QTest::newRow("Broadcast") << "Broadcast" << QStringList();
        QTest::newRow("Print") << "Print" << QStringList();
    }
    void startingSkills()
    {
        QFETCH(QString, title);
        QFETCH(QStringList, skills);
        QCOMPARE(SkillLists::startingSkills(title), skills);
    }
};

QTEST_MAIN(TestProfileRules)
#include "tst_profile_rules.moc"
