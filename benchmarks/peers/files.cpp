// files.cpp: the peers' files in memory and on disk, and their streams of strings.
#include "../FileOperations.h"

#include <gio/gio.h>
#include <wx/mstream.h>

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QSaveFile>

using namespace bench;

namespace {

void MemoryQBuffer(State& st)
{
    for (auto _ : st) {
        QBuffer f;
        f.open(QIODevice::ReadWrite);
        writeAll(memorySize, [&] { f.write(block, chunk); });
        f.seek(0);
        readAll(memorySize, [&](char* b) { return f.read(b, chunk) == chunk; });
    }
}

void MemoryGio(State& st)
{
    for (auto _ : st) {
        GOutputStream* out = g_memory_output_stream_new_resizable();
        writeAll(memorySize, [&] { g_output_stream_write(out, block, chunk, nullptr, nullptr); });
        g_output_stream_close(out, nullptr, nullptr);
        GBytes* bytes = g_memory_output_stream_steal_as_bytes(G_MEMORY_OUTPUT_STREAM(out));
        GInputStream* in = g_memory_input_stream_new_from_bytes(bytes);
        readAll(memorySize, [&](char* b) { return g_input_stream_read(in, b, chunk, nullptr, nullptr) == chunk; });
        g_object_unref(in);
        g_bytes_unref(bytes);
        g_object_unref(out);
    }
}

void MemoryWx(State& st)
{
    for (auto _ : st) {
        wxMemoryOutputStream out;
        writeAll(memorySize, [&] { out.Write(block, chunk); });
        wxMemoryInputStream in(out);
        readAll(memorySize, [&](char* b) { return in.Read(b, chunk).LastRead() == std::size_t(chunk); });
    }
}

struct QtFile
{
    static void write(const std::string& path)
    {
        QFile f(QString::fromStdString(path));
        require(f.open(QIODevice::WriteOnly), "QFile");
        writeAll(fileSize, [&] { f.write(block, chunk); });
    }
    static void read(const std::string& path)
    {
        QFile f(QString::fromStdString(path));
        require(f.open(QIODevice::ReadOnly), "QFile");
        readAll(fileSize, [&](char* b) { return f.read(b, chunk) == chunk; });
    }
};

struct QtSaveFile
{
    static void write(const std::string& path)
    {
        QSaveFile f(QString::fromStdString(path));
        require(f.open(QIODevice::WriteOnly), "QSaveFile");
        writeAll(fileSize, [&] { f.write(block, chunk); });
        require(f.commit(), "QSaveFile");
    }
};

QByteArray StreamedTexts(const std::vector<QString>& texts)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    for (const QString& each : texts)
        stream << each;
    return bytes;
}

std::vector<QString> QtTexts()
{
    std::vector<QString> texts;
    for (const std::u16string& each : archiveTexts())
        texts.push_back(text<QString>(each));
    return texts;
}

void StreamWrite(State& st)
{
    const auto texts = QtTexts();
    for (auto _ : st)
        DoNotOptimize(StreamedTexts(texts));
}

void StreamRead(State& st)
{
    const QByteArray bytes = StreamedTexts(QtTexts());
    for (auto _ : st) {
        QDataStream stream(bytes);
        stream.setByteOrder(QDataStream::LittleEndian);
        std::vector<QString> texts(archiveTexts().size());
        for (QString& each : texts)
            stream >> each;
        require(texts.back() == text<QString>(archiveTexts().back()), "stream");
    }
}

BENCHMARK(MemoryQBuffer)->Name("File/Memory1M/QBuffer");
BENCHMARK(MemoryGio)->Name("File/Memory1M/GMemoryStream");
BENCHMARK(MemoryWx)->Name("File/Memory1M/wxMemoryStream");
BENCHMARK(FileWrite<QtFile>)->Name("File/Write8M/QFile")->UseRealTime();
BENCHMARK(FileWrite<QtSaveFile>)->Name("File/Write8M/QSaveFile")->UseRealTime();
BENCHMARK(FileRead<QtFile>)->Name("File/Read8M/QFile")->UseRealTime();
BENCHMARK(StreamWrite)->Name("Archive/Write10000/QDataStream");
BENCHMARK(StreamRead)->Name("Archive/Read10000/QDataStream");

}  // namespace
