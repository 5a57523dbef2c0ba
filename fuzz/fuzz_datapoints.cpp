// The datapoint file (Manager::loadDatapoints): any file is loaded or refused
// with a reason. The store lives for the whole process, so names repeat across
// inputs; a name seen before must be refused, not replaced.

#include "FuzzSupport.h"
#include "Manager.h"

#include <QCoreApplication>
#include <QTemporaryFile>

namespace {
QTemporaryFile *file = nullptr;
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    fuzz::initQuiet();
    static QCoreApplication app(*argc, *argv);
    file = new QTemporaryFile;
    if (!file->open())
        std::abort();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    file->resize(0);
    file->seek(0);
    file->write(reinterpret_cast<const char *>(data), qint64(size));
    file->flush();
    QString error;
    if (!Manager::loadDatapoints(file->fileName(), error) && error.isEmpty())
        std::abort();
    return 0;
}
