#include "PFFileObject.h"

#include "PFDispatch.h"
#include "PFError.h"
#include "Parse.h"
#include "ParseCore.h"

#include <QMimeDatabase>
#include <QUuid>

PFFileObject::PFFileObject(QString name, QUrl url, std::optional<QByteArray> data, QByteArray contentType)
    : m_name(std::move(name)), m_url(std::move(url)), m_data(std::move(data)), m_contentType(std::move(contentType))
{
}

PFFileObjectPtr PFFileObject::fileObjectWithData(const QByteArray &data)
{
    return fileObjectWithName(QStringLiteral("file"), data);
}

PFFileObjectPtr PFFileObject::fileObjectWithName(const QString &name, const QByteArray &data,
                                                 const QByteArray &contentType)
{
    // Without a stated type the bytes say what they are, so that a picture is served as one
    // (the backend also takes the stored name's extension from the type).
    const QByteArray type =
        contentType.isEmpty() ? QMimeDatabase().mimeTypeForData(data).name().toLatin1() : contentType;
    return std::make_shared<PFFileObject>(name, QUrl(), data, type);
}

PFFileObjectPtr PFFileObject::fileObjectWithName(const QString &name, const QUrl &url)
{
    return std::make_shared<PFFileObject>(name, url, std::nullopt, QByteArray());
}

QString PFFileObject::uploadRequestId()
{
    if (m_uploadRequestId.isEmpty())
        m_uploadRequestId = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return m_uploadRequestId;
}

void PFFileObject::didUpload(const QString &name, const QUrl &url)
{
    m_name = name;
    m_url = url;
}

void PFFileObject::saveInBackgroundWithBlock(PFBooleanResultBlock block)
{
    ParseCore *core = Parse::core();
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), false);
        return;
    }
    core->fileController().upload(shared_from_this(), core->sessionToken(), std::move(block));
}

void PFFileObject::getDataInBackgroundWithBlock(PFDataResultBlock block)
{
    ParseCore *core = Parse::core();
    if (m_data) {
        PFDispatch::later([block, data = *m_data] {
            if (block)
                block(data, nullptr);
        });
        return;
    }
    if (!core) {
        PFDispatch::failLater(block, PFError::notInitialized(), QByteArray());
        return;
    }
    core->fileController().download(shared_from_this(), std::move(block));
}
