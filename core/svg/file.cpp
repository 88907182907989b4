#include <Ozmira/SVG/ozmSVGParser.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ozm {
namespace {

/// Repeats a system call until no signal interrupts it.
template <typename Call>
int RetryInterrupted(Call call) {
    int result;
    do {
        result = call();
    } while (result == -1 && errno == EINTR);
    return result;
}

class File {
public:
    explicit File(const char* path)
        // Opening a named pipe without a writer must not block.
        : m_descriptor(RetryInterrupted([&] { return open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC); })) {}
    ~File() {
        if (IsOpen()) close(m_descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const { return m_descriptor != -1; }

    /// Returns false if the size cannot be determined.
    bool GetSize(size_t& size) const {
        struct stat status;
        if (RetryInterrupted([&] { return fstat(m_descriptor, &status); }) == -1 || status.st_size < 0)
            return false;
        size = static_cast<size_t>(status.st_size);
        return true;
    }

    /// Reads once. Returns the number of characters read, 0 on an error.
    size_t Read(char* buffer, size_t size) const {
        const ssize_t count = read(m_descriptor, buffer, size);
        return count < 0 ? 0 : static_cast<size_t>(count);
    }

private:
    const int m_descriptor;
};

struct FreeMemory {
    void operator()(char* memory) const { std::free(memory); }
};

} // namespace

std::unique_ptr<Document> SVGParser::CreateDocumentWithContentsOfSVGFile(const char* path) {
    return CreateDocumentWithContentsOfSVGFile_unbufferedSysOpen(path);
}

std::unique_ptr<Document> SVGParser::CreateDocumentWithContentsOfSVGFile_unbufferedSysOpen(const char* path) {
    if (!path) return nullptr;
    const File file(path);
    size_t size = 0;
    if (!file.IsOpen() || !file.GetSize(size)) return nullptr;
    const std::unique_ptr<char, FreeMemory> text(static_cast<char*>(std::malloc(size + 1)));
    if (!text) return nullptr;
    // Less than the size may be read: directories have a size but cannot be read, and files may shrink.
    text.get()[file.Read(text.get(), size)] = '\0';
    return ParseSVGData(text.get());
}

} // namespace ozm
