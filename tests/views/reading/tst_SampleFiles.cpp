// SPDX-License-Identifier: MIT
#include "Reading.h"

#include "views/reading/SampleLayout.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtEndian>

class tst_SampleFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(m_folder.isValid()); }
    void arraysAreRead_data();
    void arraysAreRead();
    void soundIsRead_data();
    void soundIsRead();
    void filesAreRefusedInWords_data();
    void filesAreRefusedInWords();
    void rawSamplesAreRead_data();
    void rawSamplesAreRead();
    void channelsAreChosen();
    void everyPrefixOfAHeaderIsTaken();
    void filesOfNumpyAreRead_data();
    void filesOfNumpyAreRead();
    void filesOfSoxAreRead_data();
    void filesOfSoxAreRead();
    void largeFilesAreMapped();
    void aMappedFileThatShrinksIsReadAnew();
    void aMappedFileThatGrowsStaysAsItWas();

private:
    QString write(const QByteArray &bytes) const
    {
        writeFile(m_folder.filePath("samples"), bytes);
        return m_folder.filePath("samples");
    }
    QTemporaryDir m_folder;
};

namespace {

QByteArray npy(const QByteArray &dictionary, const QByteArray &values, int version = 1)
{
    QByteArray header = dictionary;
    const int prefix = version == 1 ? 10 : 12;
    while ((prefix + header.size() + 1) % 64 != 0)
        header += ' ';
    header += '\n';
    QByteArray bytes = "\x93NUMPY" + QByteArray(1, char(version)) + QByteArray(1, '\0');
    const auto size = qToLittleEndian(quint32(header.size()));
    bytes += QByteArray(reinterpret_cast<const char *>(&size), version == 1 ? 2 : 4);
    return bytes + header + values;
}

QByteArray dictionary(const char *type, const char *shape, const char *order = "False")
{
    return QByteArray("{'descr': '") + type + "', 'fortran_order': " + order + ", 'shape': " + shape + ", }";
}

template <class T>
QByteArray packed(std::initializer_list<T> values, bool bigEndian = false)
{
    QByteArray bytes;
    for (const T value : values) {
        QByteArray one(sizeof(T), '\0');
        if (bigEndian)
            qToBigEndian(value, one.data());
        else
            qToLittleEndian(value, one.data());
        bytes += one;
    }
    return bytes;
}

QByteArray chunk(const char *name, const QByteArray &bytes, qint64 size = -1)
{
    const QByteArray pad(int(bytes.size() % 2), '\0');
    return name + packed<quint32>({quint32(size < 0 ? bytes.size() : size)}) + bytes + (size < 0 ? pad : QByteArray());
}

QByteArray format(int tag, int channels, int bits, int bytes)
{
    return chunk("fmt ",
                 packed<quint16>({quint16(tag), quint16(channels)})
                     + packed<quint32>({8000, quint32(8000 * channels * bytes)})
                     + packed<quint16>({quint16(channels * bytes), quint16(bits)}));
}

QByteArray wav(const QByteArray &chunks, const char *kind = "RIFF")
{
    return kind + packed<quint32>({quint32(4 + chunks.size())}) + "WAVE" + chunks;
}

/// Reads a file with default settings and waits.
void read(SeriesReader &reader, const QString &path)
{
    reader.setSource(path);
    QTRY_VERIFY(hasEnded(reader));
}

} // namespace

void tst_SampleFiles::arraysAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SeriesStore::ValueType>("type");
    QTest::addColumn<QByteArray>("expected");
    QTest::addColumn<QString>("detected");
    const auto add = [](const char *name, const QByteArray &bytes, SeriesStore::ValueType type, const char *expected,
                        const char *detected = "NumPy array") {
        QTest::newRow(name) << bytes << type << QByteArray(expected) << QString::fromLatin1(detected);
    };
    add("<f8", npy(dictionary("<f8", "(3,)"), packed<double>({1.5, -2.0, 1e300})), SeriesStore::Float64,
        "1.5 -2 1.0000000000000001e+300");
    add(">f8", npy(dictionary(">f8", "(2,)"), packed<double>({1.5, -2.0}, true)), SeriesStore::Float64, "1.5 -2");
    add("=f8", npy(dictionary("=f8", "(1,)"), packed<double>({1.5})), SeriesStore::Float64, "1.5");
    add("<f4", npy(dictionary("<f4", "(2,)"), packed<float>({1.5f, -2.0f})), SeriesStore::Float32, "1.5 -2");
    add(">f4", npy(dictionary(">f4", "(2,)"), packed<float>({1.5f, -2.0f}, true)), SeriesStore::Float32, "1.5 -2");
    add("<f2", npy(dictionary("<f2", "(2,)"), packed<quint16>({0x3E00, 0xC000})), SeriesStore::Float32, "1.5 -2");
    add("<i8", npy(dictionary("<i8", "(2,)"), packed<qint64>({-5, 1LL << 40})), SeriesStore::Float64,
        "-5 1099511627776", "doubles");
    add("<u8", npy(dictionary("<u8", "(1,)"), packed<quint64>({1ULL << 63})), SeriesStore::Float64,
        "9.2233720368547758e+18");
    add("<i4", npy(dictionary("<i4", "(2,)"), packed<qint32>({-5, 7})), SeriesStore::Int32, "-5 7");
    add(">u4", npy(dictionary(">u4", "(1,)"), packed<quint32>({4000000000u}, true)), SeriesStore::UInt32, "4000000000");
    add("<i2", npy(dictionary("<i2", "(2,)"), packed<qint16>({-5, 7})), SeriesStore::Int16, "-5 7");
    add(">i2", npy(dictionary(">i2", "(2,)"), packed<qint16>({-5, 7}, true)), SeriesStore::Int16, "-5 7");
    add("<u2", npy(dictionary("<u2", "(1,)"), packed<quint16>({60000})), SeriesStore::UInt16, "60000");
    add("|i1", npy(dictionary("|i1", "(2,)"), packed<qint8>({-5, 7})), SeriesStore::Int8, "-5 7");
    add("|u1", npy(dictionary("|u1", "(1,)"), packed<quint8>({200})), SeriesStore::UInt8, "200");
    add("|b1", npy(dictionary("|b1", "(3,)"), packed<quint8>({1, 0, 1})), SeriesStore::UInt8, "1 0 1");
    add("version 2", npy(dictionary("<i2", "(2,)"), packed<qint16>({1, 2}), 2), SeriesStore::Int16, "1 2");
    add("version 3", npy(dictionary("<i2", "(2,)"), packed<qint16>({1, 2}), 3), SeriesStore::Int16, "1 2");
    add("two dimensions", npy(dictionary("<i2", "(2, 3)"), packed<qint16>({1, 2, 3, 4, 5, 6})), SeriesStore::Int16,
        "1 4|2 5|3 6", "3 channels");
    add("one row", npy(dictionary("<i2", "(1, 3)"), packed<qint16>({1, 2, 3})), SeriesStore::Int16, "1 2 3",
        "only row");
    add("one column of Fortran", npy(dictionary("<i2", "(3, 1)", "True"), packed<qint16>({1, 2, 3})),
        SeriesStore::Int16, "1 2 3");
    add("no dimension", npy(dictionary("<f8", "()"), packed<double>({7.0})), SeriesStore::Float64, "7");
    add("nothing in it", npy(dictionary("<f8", "(0,)"), {}), SeriesStore::Float64, "");
    add("other order and quotes",
        npy("{\"shape\":(2,),\"fortran_order\":False,\"descr\":\"<i2\"}", packed<qint16>({1, 2})), SeriesStore::Int16,
        "1 2");
    add("cut off", npy(dictionary("<f8", "(3,)"), packed<double>({1.0, 2.0}) + "abc"), SeriesStore::Float64, "1 2",
        "ends after 2 of 3 samples; the last 3 bytes");
    add("more behind", npy(dictionary("<f8", "(1,)"), packed<double>({1.0, 2.0})), SeriesStore::Float64, "1");
    add("NaN", npy(dictionary("<f8", "(2,)"), packed<double>({qQNaN(), 2.0})), SeriesStore::Float64, "- 2");
}

void tst_SampleFiles::arraysAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, detected);
    SeriesReader reader;
    read(reader, write(bytes));
    QCOMPARE(reader.errorString(), QString());
    QTEST(shownStores(reader), "expected");
    QTEST(reader.store()->valueType(), "type");
    QVERIFY2(reader.detected().contains(detected), qPrintable(reader.detected()));
}

void tst_SampleFiles::soundIsRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SeriesStore::ValueType>("type");
    QTest::addColumn<QByteArray>("expected");
    const auto add = [](const char *name, const QByteArray &bytes, SeriesStore::ValueType type, const char *expected) {
        QTest::newRow(name) << bytes << type << QByteArray(expected);
    };
    const QByteArray mono = format(1, 1, 16, 2);
    const QByteArray three = packed<qint16>({1, -2, 3});
    add("8 bits", wav(format(1, 1, 8, 1) + chunk("data", packed<quint8>({0, 128, 255}))), SeriesStore::UInt8,
        "0 128 255");
    add("16 bits", wav(mono + chunk("data", three)), SeriesStore::Int16, "1 -2 3");
    add("24 bits", wav(format(1, 1, 24, 3) + chunk("data", QByteArray("\1\0\0\xFE\xFF\xFF\0\0\x80", 9))),
        SeriesStore::Int32, "1 -2 -8388608");
    add("32 bits", wav(format(1, 1, 32, 4) + chunk("data", packed<qint32>({1, -2}))), SeriesStore::Int32, "1 -2");
    add("float", wav(format(3, 1, 32, 4) + chunk("data", packed<float>({0.5f, -2.0f}))), SeriesStore::Float32,
        "0.5 -2");
    add("double", wav(format(3, 1, 64, 8) + chunk("data", packed<double>({0.5, -2.0}))), SeriesStore::Float64,
        "0.5 -2");
    add("12 bits in 16", wav(format(1, 1, 12, 2) + chunk("data", three)), SeriesStore::Int16, "1 -2 3");
    add("two channels", wav(format(1, 2, 16, 2) + chunk("data", packed<qint16>({1, 2, 3, 4}))), SeriesStore::Int16,
        "1 3|2 4");
    const QByteArray extensible = packed<quint16>({0xFFFE, 1}) + packed<quint32>({8000, 16000})
        + packed<quint16>({2, 16, 22, 16}) + packed<quint32>({4}) + packed<quint16>({1}) + QByteArray(14, 'x');
    add("extensible", wav(chunk("fmt ", extensible) + chunk("data", three)), SeriesStore::Int16, "1 -2 3");
    add("other chunks in front",
        wav(chunk("LIST", "abc") + mono + chunk("fact", QByteArray(4, '\0')) + chunk("data", three)),
        SeriesStore::Int16, "1 -2 3");
    add("a chunk behind", wav(mono + chunk("data", three) + chunk("LIST", "abcd")), SeriesStore::Int16, "1 -2 3");
    add("a size of 0", wav(mono + chunk("data", three, 0)), SeriesStore::Int16, "1 -2 3");
    add("an unknown size", wav(mono + chunk("data", three, 0xFFFFFFFF)), SeriesStore::Int16, "1 -2 3");
    add("too large a size", wav(mono + chunk("data", three, 100)), SeriesStore::Int16, "1 -2 3");
    const QByteArray sizes = packed<quint64>({100, 6, 3}) + packed<quint32>({0});
    add("RF64", wav(chunk("ds64", sizes) + mono + chunk("data", three, 0xFFFFFFFF) + "behind", "RF64"),
        SeriesStore::Int16, "1 -2 3");
    add("half a sample at the end", wav(mono + chunk("data", three + "x", 7)), SeriesStore::Int16, "1 -2 3");
}

void tst_SampleFiles::soundIsRead()
{
    QFETCH(QByteArray, bytes);
    SeriesReader reader;
    read(reader, write(bytes));
    QCOMPARE(reader.errorString(), QString());
    QTEST(shownStores(reader), "expected");
    QTEST(reader.store()->valueType(), "type");
    QCOMPARE(reader.sampleRate(), 8000.0);
}

void tst_SampleFiles::filesAreRefusedInWords_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("part");
    const auto add = [](const char *name, const QByteArray &bytes, const char *part) {
        QTest::newRow(name) << bytes << QString::fromLatin1(part);
    };
    add("array: objects", npy(dictionary("|O", "(1,)"), "x"), "Python objects");
    add("array: complex", npy(dictionary("<c16", "(1,)"), QByteArray(16, 'x')), "complex");
    add("array: text", npy(dictionary("<U5", "(1,)"), QByteArray(20, 'x')), "<U5");
    add("array: times", npy(dictionary("<M8[ns]", "(1,)"), QByteArray(8, 'x')), "M8");
    add("array: records",
        npy("{'descr': [('a', '<f8'), ('b', '<i4')], 'fortran_order': False, 'shape': (1,), }", QByteArray(12, 'x')),
        "records");
    add("array: Fortran order", npy(dictionary("<f8", "(2, 2)", "True"), QByteArray(32, 'x')), "ascontiguousarray");
    add("array: three dimensions", npy(dictionary("<f8", "(2, 2, 2)"), QByteArray(64, 'x')), "3 dimensions");
    add("array: too many columns", npy(dictionary("<f8", "(2, 5000)"), {}), "array.T");
    add("array: version 4", npy(dictionary("<f8", "(1,)"), {}, 4), "version 4");
    add("array: cut off in the header", npy(dictionary("<f8", "(1,)"), {}).left(30), "ends within its header");
    add("array: a damaged header", npy("{'descr': '<f8', 'shape': (1,)", {}), "damaged");
    add("array: a negative length", npy(dictionary("<f8", "(-1,)"), {}), "damaged");
    add("array: a long header", QByteArray("\x93NUMPY\2\0\xFF\xFF\xFF\x7F{}", 14), "damaged");
    add("sound: mu-law", wav(format(7, 1, 8, 1) + chunk("data", "abc")), "mu-law");
    add("sound: another codec", wav(format(999, 1, 8, 1) + chunk("data", "abc")), "codec 999");
    add("sound: no format", wav(chunk("data", "abcd")), "doesn't say what its samples are");
    add("sound: no samples", wav(format(1, 1, 16, 2)), "ends within its header");
    add("sound: no channels", wav(format(1, 0, 16, 2) + chunk("data", "abcd")), "0 channels");
    add("sound: 40 bits", wav(format(1, 1, 40, 5) + chunk("data", "abcd")), "40 bits");
    add("sound: another RIFF", "RIFF" + packed<quint32>({4}) + "AVI abcdefgh", "not a WAV file");
    add("sound: nothing but a name", "RIFF", "ends within its header");
}

void tst_SampleFiles::filesAreRefusedInWords()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, part);
    SeriesReader reader;
    read(reader, write(bytes));
    QCOMPARE(reader.status(), SeriesReader::Error);
    QVERIFY2(reader.errorString().contains(part), qPrintable(reader.errorString()));
}

void tst_SampleFiles::rawSamplesAreRead_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<SeriesStore::ValueType>("type");
    QTest::addColumn<bool>("bigEndian");
    QTest::addColumn<qreal>("offset");
    QTest::addColumn<QByteArray>("expected");
    const auto add = [](const char *name, const QByteArray &bytes, SeriesStore::ValueType type, const char *expected,
                        qreal offset = 0.0) {
        QTest::newRow(name) << bytes << type << QByteArray(name).endsWith("big") << offset << QByteArray(expected);
    };
    add("Int16", packed<qint16>({1, -2}), SeriesStore::Int16, "1 -2");
    add("Int16, big", packed<qint16>({1, -2}, true), SeriesStore::Int16, "1 -2");
    add("Float32", packed<float>({1.5f}), SeriesStore::Float32, "1.5");
    add("Float64, big", packed<double>({1.5}, true), SeriesStore::Float64, "1.5");
    add("UInt8", "\1\xFF", SeriesStore::UInt8, "1 255");
    add("behind an offset", "abc" + packed<qint16>({1, -2}), SeriesStore::Int16, "1 -2", 3.0);
    add("behind a long offset", QByteArray(300'000, 'x') + packed<qint16>({1, -2}), SeriesStore::Int16, "1 -2",
        300'000.0);
    add("half a sample", packed<qint16>({1}) + "x", SeriesStore::Int16, "1");
}

void tst_SampleFiles::rawSamplesAreRead()
{
    QFETCH(QByteArray, bytes);
    QFETCH(SeriesStore::ValueType, type);
    QFETCH(bool, bigEndian);
    QFETCH(qreal, offset);
    SeriesReader reader;
    reader.setFormat(SeriesReader::Raw);
    reader.setSampleType(type);
    reader.setByteOrder(bigEndian ? SeriesReader::BigEndian : SeriesReader::LittleEndian);
    reader.setOffset(offset);
    read(reader, write(bytes));
    QCOMPARE(reader.errorString(), QString());
    QTEST(shownStores(reader), "expected");
    QTEST(reader.store()->valueType(), "type");
    reader.setOffset(1e6);
    QTRY_VERIFY(reader.errorString().contains(QLatin1String("ends before its samples begin")));
}

void tst_SampleFiles::channelsAreChosen()
{
    SeriesReader reader;
    reader.setChannel(2);
    read(reader, write(wav(format(1, 2, 16, 2) + chunk("data", packed<qint16>({1, 2, 3, 4})))));
    QCOMPARE(shownStore(reader.store()), QByteArray("2 4"));
    reader.setChannel(3);
    QTRY_VERIFY2(reader.errorString().contains(QString::fromUtf8("no column of numbers “3”")),
                 qPrintable(reader.errorString()));
}

void tst_SampleFiles::everyPrefixOfAHeaderIsTaken()
{
    const QByteArray array = npy(dictionary("<f8", "(1,)"), {});
    for (int size = 0; size < array.size(); ++size) {
        const SHeader header = npyHeader(array.left(size));
        QVERIFY(!header.layout && header.needed > size && header.needed <= array.size());
    }
    QVERIFY(npyHeader(array).layout);
    const QByteArray sound = wav(chunk("LIST", "abc") + format(1, 2, 16, 2) + chunk("data", ""));
    for (int size = 0; size < sound.size(); ++size) {
        const SHeader header = wavHeader(sound.left(size), -1);
        QVERIFY(!header.layout && header.needed > size && header.needed <= sound.size());
    }
    QVERIFY(wavHeader(sound, -1).layout);
}

void tst_SampleFiles::filesOfNumpyAreRead_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("doubles") << QStringLiteral("numpy.array([1.5, numpy.nan, -2])") << QByteArray("1.5 - -2");
    QTest::newRow("whole numbers") << QStringLiteral("numpy.arange(5)") << QByteArray("0 1 2 3 4");
    QTest::newRow("big-endian") << QStringLiteral("numpy.array([1, -2], dtype='>i2')") << QByteArray("1 -2");
    QTest::newRow("half") << QStringLiteral("numpy.array([1.5, -2], dtype='f2')") << QByteArray("1.5 -2");
    QTest::newRow("truths") << QStringLiteral("numpy.array([True, False])") << QByteArray("1 0");
    QTest::newRow("table") << QStringLiteral("numpy.arange(6.0).reshape(3, 2)") << QByteArray("0 2 4|1 3 5");
    QTest::newRow("objects") << QStringLiteral("numpy.array([1, None])") << QByteArray();
    QTest::newRow("complex") << QStringLiteral("numpy.array([1j])") << QByteArray();
    QTest::newRow("Fortran") << QStringLiteral("numpy.asfortranarray(numpy.arange(6.0).reshape(3, 2))") << QByteArray();
}

void tst_SampleFiles::filesOfNumpyAreRead()
{
    QFETCH(QString, expression);
    QFETCH(QByteArray, expected);
    const QString path = m_folder.filePath("numpy.npy");
    const QString python = QStringLiteral("import numpy; numpy.save('%1', %2)").arg(path, expression);
    if (QProcess::execute(QStringLiteral("/usr/bin/python3"), {"-c", python}) != 0)
        QSKIP("needs python3-numpy");
    SeriesReader reader;
    read(reader, path);
    QCOMPARE(reader.status(), expected.isEmpty() ? SeriesReader::Error : SeriesReader::Ready);
    if (!expected.isEmpty())
        QCOMPARE(shownStores(reader), expected);
}

void tst_SampleFiles::filesOfSoxAreRead_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<double>("factor"); // of the samples of 16 bits; 0: refused
    QTest::addColumn<double>("zero");
    QTest::newRow("8 bits") << QStringList{"-b", "8", "-e", "unsigned"} << 1.0 / 256.0 << 128.0;
    QTest::newRow("16 bits") << QStringList{"-b", "16", "-e", "signed"} << 1.0 << 0.0;
    QTest::newRow("24 bits") << QStringList{"-b", "24", "-e", "signed"} << 256.0 << 0.0;
    QTest::newRow("32 bits") << QStringList{"-b", "32", "-e", "signed"} << 65536.0 << 0.0;
    QTest::newRow("float") << QStringList{"-b", "32", "-e", "floating-point"} << 1.0 / 32768.0 << 0.0;
    QTest::newRow("double") << QStringList{"-b", "64", "-e", "floating-point"} << 1.0 / 32768.0 << 0.0;
    QTest::newRow("mu-law") << QStringList{"-b", "8", "-e", "mu-law"} << 0.0 << 0.0;
}

void tst_SampleFiles::filesOfSoxAreRead()
{
    QFETCH(QStringList, options);
    QFETCH(double, factor);
    QFETCH(double, zero);
    const QString raw = m_folder.filePath("sox.raw");
    const QString path = m_folder.filePath("sox.wav");
    QByteArray samples;
    for (int i = 0; i < 2000; ++i)
        samples += packed<qint16>({qint16(256 * (i * 37 % 251 - 125))});
    writeFile(raw, samples);
    const QStringList input{"-q", "-D", "-t", "raw", "-r", "1000", "-c", "2", "-b", "16", "-e", "signed", raw};
    if (QStandardPaths::findExecutable("sox").isEmpty()
        || QProcess::execute("sox", input + options + QStringList{path}) != 0)
        QSKIP("needs sox");
    SeriesReader reader;
    read(reader, path);
    QCOMPARE(reader.status(), factor == 0.0 ? SeriesReader::Error : SeriesReader::Ready);
    if (factor == 0.0)
        return;
    QCOMPARE(reader.stores().size(), 2);
    QCOMPARE(reader.sampleRate(), 1000.0);
    for (int i = 0; i < 2000; ++i) {
        const SeriesSnapshot channel = snapshotOf(reader.stores().at(i % 2));
        QCOMPARE(channel.end(), qint64(1000));
        QCOMPARE(channel.valueAt(i / 2), zero + factor * 256 * (i * 37 % 251 - 125));
    }
}

void tst_SampleFiles::largeFilesAreMapped()
{
    QByteArray values;
    for (int i = 0; i < 100'000; ++i)
        values += packed<float>({float(i)});
    const QString path = write(npy(dictionary("<f4", "(100000,)"), values));
    SeriesReader reader;
    reader.setMapFrom(1000);
    read(reader, path);
    QTRY_VERIFY(reader.store()->isComplete());
    QCOMPARE(reader.store()->count(), 100'000.0);
    QCOMPARE(reader.store()->maximum(), 99'999.0);
    QVERIFY(!reader.store()->data()->room().begin); // not copied
    reader.setFollow(true);                         // then it may shrink
    QTRY_VERIFY(reader.status() == SeriesReader::Ready && reader.store()->data()->room().begin);
    QCOMPARE(reader.store()->maximum(), 99'999.0);
}

void tst_SampleFiles::aMappedFileThatShrinksIsReadAnew()
{
    const QByteArray header = npy(dictionary("<f4", "(1000000,)"), {});
    const QString path = write(header);
    QVERIFY(QFile::resize(path, header.size() + 4'000'000));
    SeriesReader reader;
    reader.setMapFrom(1);
    read(reader, path);
    QTRY_VERIFY(reader.store()->isComplete());
    const SeriesSnapshot before = reader.store()->snapshot();
    QCOMPARE(before.end(), qint64(1'000'000));
    const QByteArray shorter = header + packed<float>({5.0f, 6.0f});
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && file.write(shorter) == shorter.size());
    QVERIFY(file.resize(shorter.size())); // at once: a look at an empty file would be the end of it
    for (qint64 i = before.begin(); i < before.end(); i += 500)
        QVERIFY(before.valueAt(i) == 0.0 || before.valueAt(i) == 5.0); // and the process goes on
    QTRY_COMPARE(shownStores(reader), QByteArray("5 6"));
    QTRY_VERIFY(hasEnded(reader));
    QVERIFY2(reader.detected().contains(QLatin1String("read anew, since the file was truncated")),
             qPrintable(reader.detected()));
    writeFile(path, {});
    QTRY_COMPARE(reader.status(), SeriesReader::Error);
}

void tst_SampleFiles::aMappedFileThatGrowsStaysAsItWas()
{
    const QString path = write(packed<qint16>({1, 2, 3}));
    SeriesReader reader;
    reader.setFormat(SeriesReader::Raw);
    reader.setSampleType(SeriesStore::Int16);
    reader.setMapFrom(1);
    read(reader, path);
    QCOMPARE(shownStores(reader), QByteArray("1 2 3"));
    const SeriesStore *const store = reader.store();
    const int revision = store->revision();
    writeFile(path, packed<qint16>({4, 5}), QIODevice::WriteOnly | QIODevice::Append);
    QVERIFY(QFile::rename(path, path + ".moved"));
    QTest::qWait(300);
    QCOMPARE(shownStores(reader), QByteArray("1 2 3"));
    QCOMPARE(store->revision(), revision);
    reader.cancel();
    QTest::qWait(20);
    QCOMPARE(shownStores(reader), QByteArray("1 2 3"));
    QCOMPARE(reader.status(), SeriesReader::Ready);
}

QTEST_GUILESS_MAIN(tst_SampleFiles)
#include "tst_SampleFiles.moc"
