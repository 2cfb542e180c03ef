#include "platform/OoxmlPackage.h"

#include <minizip/zip.h>

#include <cstring>

// The file functions minizip writes through: a growing byte array with a position, since
// minizip goes back to complete each entry's local header.
struct OoxmlPackageIo {
    static voidpf open(voidpf opaque, const char *, int) { return opaque; }
    static uLong read(voidpf, voidpf, void *, uLong) { return 0; }
    static uLong write(voidpf, voidpf stream, const void *buf, uLong size)
    {
        auto *p = static_cast<OoxmlPackage *>(stream);
        const qint64 end = p->mPosition + qint64(size);
        if (end > p->mBytes.size())
            p->mBytes.resize(end);
        std::memcpy(p->mBytes.data() + p->mPosition, buf, size);
        p->mPosition = end;
        return size;
    }
    static long tell(voidpf, voidpf stream) { return long(static_cast<OoxmlPackage *>(stream)->mPosition); }
    static long seek(voidpf, voidpf stream, uLong offset, int origin)
    {
        auto *p = static_cast<OoxmlPackage *>(stream);
        qint64 base = 0;
        if (origin == ZLIB_FILEFUNC_SEEK_CUR)
            base = p->mPosition;
        else if (origin == ZLIB_FILEFUNC_SEEK_END)
            base = p->mBytes.size();
        p->mPosition = base + qint64(offset);
        return 0;
    }
    static int close(voidpf, voidpf) { return 0; }
    static int error(voidpf, voidpf) { return 0; }
};

OoxmlPackage::OoxmlPackage()
{
    zlib_filefunc_def io{};
    io.zopen_file = &OoxmlPackageIo::open;
    io.zread_file = &OoxmlPackageIo::read;
    io.zwrite_file = &OoxmlPackageIo::write;
    io.ztell_file = &OoxmlPackageIo::tell;
    io.zseek_file = &OoxmlPackageIo::seek;
    io.zclose_file = &OoxmlPackageIo::close;
    io.zerror_file = &OoxmlPackageIo::error;
    io.opaque = this;
    mBytes.reserve(1 << 20);
    mText.reserve(kChunk + 64 * 1024);
    mZip = zipOpen2("", APPEND_STATUS_CREATE, nullptr, &io);
    mFailed = !mZip;
}

OoxmlPackage::~OoxmlPackage()
{
    if (mZip)
        zipClose(mZip, nullptr);
}

void OoxmlPackage::beginPart(const char *name)
{
    mText.clear();
    if (mFailed)
        return;
    zip_fileinfo info{};
    info.tmz_date.tm_mday = 1;
    info.tmz_date.tm_year = 1980;
    mFailed = zipOpenNewFileInZip4_64(mZip, name, &info, nullptr, 0, nullptr, 0, nullptr, Z_DEFLATED, Z_BEST_SPEED, 0,
                                      -MAX_WBITS, DEF_MEM_LEVEL, Z_DEFAULT_STRATEGY, nullptr, 0, 0, 0, 0) != ZIP_OK;
}

void OoxmlPackage::flush()
{
    if (!mFailed && !mText.empty())
        mFailed = zipWriteInFileInZip(mZip, mText.data(), unsigned(mText.size())) < 0;
    mText.clear();
}

void OoxmlPackage::endPart()
{
    flush();
    if (!mFailed)
        mFailed = zipCloseFileInZip(mZip) != ZIP_OK;
}

QByteArray OoxmlPackage::finish()
{
    if (!mFailed)
        mFailed = zipClose(mZip, nullptr) != ZIP_OK;
    mZip = nullptr;
    if (mFailed)
        return {};
    return mBytes;
}
