#include <Ozmira/SVG/ozmSVGParser.h>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ozm {
namespace {

/// Calls `call` again for as long as signals interrupt it.
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
        // Opening a pipe that nobody writes to must not wait.
        : m_descriptor(RetryInterrupted([&] { return open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC); })) {}
    ~File() {
        if (IsOpen()) close(m_descriptor);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool IsOpen() const { return m_descriptor != -1; }

    bool Measure(size_t& size) const {
        struct stat status;
        if (RetryInterrupted([&] { return fstat(m_descriptor, &status); }) == -1 || status.st_size < 0)
            return false;
        size = static_cast<size_t>(status.st_size);
        return true;
    }

    /// Reads once; the number of characters that came.
    size_t Read(char* buffer, size_t size) const {
        const ssize_t count = read(m_descriptor, buffer, size);
        return count < 0 ? 0 : static_cast<size_t>(count);
    }

private:
    const int m_descriptor;
};

struct Free {
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
    if (!file.IsOpen() || !file.Measure(size)) return nullptr;
    const std::unique_ptr<char, Free> text(static_cast<char*>(std::malloc(size + 1)));
    if (!text) return nullptr;
    // Folders cannot be read and have a size all the same; a file may have become shorter.
    text.get()[file.Read(text.get(), size)] = '\0';
    return ParseSVGData(text.get());
}

} // namespace ozm
