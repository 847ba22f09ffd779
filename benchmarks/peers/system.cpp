// system.cpp: the peers' listings of a folder and their folders made along a path.
#include "../SystemOperations.h"

#include <gio/gio.h>
#include <wx/dir.h>
#include <wx/filename.h>

#include <QDir>
#include <QDirIterator>

using namespace bench;

namespace {

struct Qt
{
    static int find(const std::string& folder)
    {
        QStringList paths, names;
        for (QDirIterator each(QString::fromStdString(folder), QDir::Files); each.hasNext();) {
            each.next();
            paths << each.filePath();
            names << each.fileName();
        }
        return int(paths.size());
    }
    static bool make(const std::string& path) { return QDir().mkpath(QString::fromStdString(path)); }
};

struct QtSorted
{
    static int find(const std::string& folder)
    {
        return int(QDir(QString::fromStdString(folder)).entryInfoList(QDir::Files, QDir::Name | QDir::IgnoreCase).size());
    }
};

struct Wx
{
    static int find(const std::string& folder)
    {
        wxArrayString paths;
        return int(wxDir::GetAllFiles(folder, &paths, wxEmptyString, wxDIR_FILES));
    }
    static bool make(const std::string& path) { return wxFileName::Mkdir(path, wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL); }
};

struct Gio
{
    static bool make(const std::string& path) { return g_mkdir_with_parents(path.c_str(), 0777) == 0; }
};

BENCHMARK(FindAll<Qt>)->Name("System/Find10000/QDirIterator");
BENCHMARK(FindAll<QtSorted>)->Name("System/Find10000/QDir_sorted");
BENCHMARK(FindAll<Wx>)->Name("System/Find10000/wxDir");
BENCHMARK(MakeFolders<Qt>)->Name("System/Mkdirp10/QDir");
BENCHMARK(MakeFolders<Wx>)->Name("System/Mkdirp10/wxFileName");
BENCHMARK(MakeFolders<Gio>)->Name("System/Mkdirp10/glib");

}  // namespace
