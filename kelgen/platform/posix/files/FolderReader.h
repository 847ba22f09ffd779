// FolderReader.h: a folder that is open to be listed.
#pragma once

#include <kelgen/platform/posix/base/Descriptor.h>

#include <string>
#include <string_view>
#include <utility>

namespace kelgen::posix {

/// Reads the names of a folder. Throws: std::bad_alloc where the system has no memory to open it.
class FolderReader
{
public:
    /// Opens the folder @p native. False afterwards, with errno, for what is no folder or cannot be listed.
    explicit FolderReader(const std::string& native);

    explicit operator bool() const { return static_cast<bool>(m_folder); }

    /// Calls @p visit with the name of each entry but "." and "..", a std::string_view that ends in a zero and lasts as long as the call.
    /// 0, or an errno value when the rest cannot be read. Cost: a system call for each 16 KiB, and one more that tells the end.
    template <class Visit>
    int ForEach(Visit visit)
    {
        Piece piece;
        while (Read(piece))
            for (std::string_view name = piece.Next(); !name.empty(); name = piece.Next())
                visit(name);
        return piece.error;
    }

    /// Gives the descriptor away.
    Descriptor Release() { return std::move(m_folder); }

    /// Lets ForEach begin anew.
    void Rewind();

private:
    // What one system call gave.
    struct Piece
    {
        // The next name, or an empty one.
        std::string_view Next();

        alignas(8) char bytes[16384];
        std::size_t size = 0;
        std::size_t at = 0;
        int error = 0;
    };

    bool Read(Piece& piece);

    Descriptor m_folder;
};

}  // namespace kelgen::posix
