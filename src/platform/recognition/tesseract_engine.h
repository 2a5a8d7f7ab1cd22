#pragma once

#include "platform/text_engine.h"

#include <QThreadPool>
#include <mutex>

class TesseractReader;

// Tesseract behind line finding of our own. Pictures are read on worker threads, one a thread; readers and
// their language data are kept for the next picture.
class TesseractEngine : public TextEngine {
public:
    TesseractEngine();
    ~TesseractEngine() override;
    QFuture<Result<QList<RecognizedLine>>> recognize(const QImage &image,
                                                     const QStringList &languages) override;

private:
    struct IdleReader {
        QString languages;
        std::unique_ptr<TesseractReader> reader;
    };
    Result<QList<RecognizedLine>> work(const QImage &image, const QStringList &languages);
    Result<std::unique_ptr<TesseractReader>> takeReader(const QString &folder, const QString &languages);

    QThreadPool m_threads;
    std::mutex m_mutex;
    std::vector<IdleReader> m_idle;
};
