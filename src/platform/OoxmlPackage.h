#pragma once

#include <QByteArray>

#include <string>

// The zip container of an Office Open XML file, built in memory: parts are added one after
// another, each written into text() and deflated as it grows (fast deflate: the XML of a
// large sheet shrinks well enough at level 1 and takes a third of the time of the default).
// The entries carry the names, date (1 January 1980) and flags that libxlsxwriter gives them.
class OoxmlPackage {
public:
    OoxmlPackage();
    ~OoxmlPackage();
    OoxmlPackage(const OoxmlPackage &) = delete;
    OoxmlPackage &operator=(const OoxmlPackage &) = delete;

    // Starts the entry of a part; its text goes into text().
    void beginPart(const char *name);
    // The text of the current part so far; call flushIfLarge() now and then while writing.
    std::string &text() { return mText; }
    void flushIfLarge()
    {
        if (mText.size() >= kChunk)
            flush();
    }
    void endPart();

    // The whole file; empty when the archive couldn't be made.
    QByteArray finish();
    bool failed() const { return mFailed; }

private:
    static constexpr size_t kChunk = 256 * 1024;
    void flush();

    void *mZip = nullptr;
    QByteArray mBytes;
    qint64 mPosition = 0;
    std::string mText;
    bool mFailed = false;

    friend struct OoxmlPackageIo;
};
