#include "diagnostics/zip.h"

#include "diagnostics/texts.h"

#include <memory>
#include <zip.h>

namespace {

std::unexpected<Error> failed(const QString &detail)
{
    return fail(DiagnosticsTexts::tr("Couldn't create the diagnostics file"), detail);
}

struct SourceFree {
    void operator()(zip_source_t *source) const { zip_source_free(source); }
};
struct ArchiveDiscard {
    void operator()(zip_t *archive) const { zip_discard(archive); }
};

} // namespace

Result<QByteArray> Zip::pack(const QList<Entry> &entries)
{
    zip_error_t error;
    zip_error_init(&error);
    const std::unique_ptr<zip_source_t, SourceFree> buffer(zip_source_buffer_create(nullptr, 0, 0, &error));
    if (!buffer)
        return failed(QString::fromUtf8(zip_error_strerror(&error)));
    std::unique_ptr<zip_t, ArchiveDiscard> archive(
        zip_open_from_source(buffer.get(), ZIP_CREATE | ZIP_TRUNCATE, &error));
    if (!archive)
        return failed(QString::fromUtf8(zip_error_strerror(&error)));
    zip_source_keep(buffer.get()); // one reference is the archive's, one stays here for the result
    for (const Entry &entry : entries) {
        zip_source_t *bytes =
            zip_source_buffer(archive.get(), entry.bytes.constData(), zip_uint64_t(entry.bytes.size()), 0);
        if (!bytes || zip_file_add(archive.get(), entry.path.toUtf8().constData(), bytes, ZIP_FL_ENC_UTF_8) < 0) {
            zip_source_free(bytes);
            return failed(QString::fromUtf8(zip_strerror(archive.get())));
        }
    }
    if (zip_close(archive.get()) < 0)
        return failed(QString::fromUtf8(zip_strerror(archive.get())));
    archive.release(); // closing it has freed it

    if (zip_source_open(buffer.get()) < 0)
        return failed(QString::fromUtf8(zip_error_strerror(zip_source_error(buffer.get()))));
    zip_source_seek(buffer.get(), 0, SEEK_END);
    QByteArray result(qsizetype(zip_source_tell(buffer.get())), Qt::Uninitialized);
    zip_source_seek(buffer.get(), 0, SEEK_SET);
    const zip_int64_t read = zip_source_read(buffer.get(), result.data(), zip_uint64_t(result.size()));
    zip_source_close(buffer.get());
    if (read != result.size())
        return failed(QStringLiteral("the archive could not be read back"));
    return result;
}
