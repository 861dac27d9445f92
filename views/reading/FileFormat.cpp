// SPDX-License-Identifier: MIT
#include "views/reading/FileFormat.h"

#include "views/reading/TextDecoder.h"

namespace {

/// The beginning of files that people take for files of numbers.
struct SKnownFile
{
    const char *front;
    int size;
    const char *words;
};

constexpr SKnownFile knownFiles[] = {
    {"\x1F\x8B", 2, "is compressed. Unpack it first, or read standard input behind: gunzip -c FILE"},
    {"\xFD\x37zXZ", 5, "is compressed. Unpack it first, or read standard input behind: xz -dc FILE"},
    {"BZh", 3, "is compressed. Unpack it first, or read standard input behind: bzip2 -dc FILE"},
    {"\x28\xB5\x2F\xFD", 4, "is compressed. Unpack it first, or read standard input behind: zstd -dc FILE"},
    {"PK\x03\x04", 4, "is an archive or a spreadsheet. Save the sheet as CSV, or unpack the archive (.npz holds .npy)"},
    {"\xD0\xCF\x11\xE0", 4, "is an old spreadsheet or document. Save it as CSV"},
    {"\x89HDF", 4, "is an HDF5 file. Save the data set that you want as .npy or CSV"},
    {"MATLAB 5", 8, "is a MAT file. Save the variable that you want as text: save -ascii"},
    {"CDF\x01", 4, "is a NetCDF file. Save the variable that you want as .npy or CSV"},
    {"%PDF", 4, "is a PDF document, not a file of numbers"},
    {"\x89PNG", 4, "is a picture, not a file of numbers"},
    {"\xFF\xD8\xFF", 3, "is a picture, not a file of numbers"},
    {"\x7F"
     "ELF",
     4, "is a program, not a file of numbers"},
    {"OggS", 4, "has compressed sound. Convert it to WAV first: sox FILE OUT.wav"},
    {"fLaC", 4, "has compressed sound. Convert it to WAV first: sox FILE OUT.wav"},
    {"ID3", 3, "has compressed sound. Convert it to WAV first: sox FILE OUT.wav"},
};

} // namespace

FileFormat formatOf(const QByteArray &front, QString &obstacle)
{
    if (front.startsWith("\x93NUMPY"))
        return FileFormat::Npy;
    if (front.startsWith("RIFF") || front.startsWith("RF64") || front.startsWith("BW64"))
        return FileFormat::Wav;
    for (const SKnownFile &known : knownFiles) {
        if (front.startsWith(QByteArray::fromRawData(known.front, known.size))) {
            obstacle = QString::fromLatin1(known.words);
            return FileFormat::Auto;
        }
    }
    if (TextDecoder(front).isPlain() && front.contains('\0')) {
        obstacle = QStringLiteral(
            "is not a text: it has zero bytes. If it holds plain samples, set format to Raw, and "
            "sampleType to what they are");
        return FileFormat::Auto;
    }
    return FileFormat::Text;
}
