#pragma once

#include "PFTypes.h"

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>

// A file stored by the backend. A new file holds its data and is uploaded when a record that
// refers to it is saved; a file read from a record holds its name and URL and downloads its
// data on request.
class PFFileObject : public std::enable_shared_from_this<PFFileObject> {
public:
    PFFileObject(QString name, QUrl url, std::optional<QByteArray> data, QByteArray contentType);

    [[nodiscard]] static PFFileObjectPtr fileObjectWithData(const QByteArray &data);
    [[nodiscard]] static PFFileObjectPtr fileObjectWithName(const QString &name, const QByteArray &data,
                                                            const QByteArray &contentType = {});
    [[nodiscard]] static PFFileObjectPtr fileObjectWithName(const QString &name, const QUrl &url);

    [[nodiscard]] QString name() const { return m_name; }
    [[nodiscard]] QUrl url() const { return m_url; }
    [[nodiscard]] QByteArray contentType() const { return m_contentType; }
    // Not yet uploaded.
    [[nodiscard]] bool isDirty() const { return m_url.isEmpty(); }
    [[nodiscard]] bool isDataAvailable() const { return m_data.has_value(); }

    void saveInBackgroundWithBlock(PFBooleanResultBlock block);
    void getDataInBackgroundWithBlock(PFDataResultBlock block);

    // The request id of this file's upload, the same for every attempt: a retried upload that
    // reached the server before gets the first upload's answer, so no second file is stored.
    [[nodiscard]] QString uploadRequestId();

    // The library records the upload's outcome and the downloaded data here.
    void didUpload(const QString &name, const QUrl &url);
    void didDownload(const QByteArray &data) { m_data = data; }
    [[nodiscard]] QByteArray data() const { return m_data.value_or(QByteArray()); }

private:
    QString m_name;
    QUrl m_url;
    std::optional<QByteArray> m_data;
    QByteArray m_contentType;
    QString m_uploadRequestId;
};
