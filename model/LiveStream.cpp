#include "LiveStream.h"

#include "Freelancer.h"

PFQuery LiveStream::query()
{
    return PFQuery(QStringLiteral("Freelancer"))
        .includeKey(QStringLiteral("freelancer"))
        .orderByDescending(QStringLiteral("createdAt"));
}

std::shared_ptr<Freelancer> LiveStream::freelancer() const
{
    return objectForKeyAs<Freelancer>(QStringLiteral("freelancer"));
}

void LiveStream::setFreelancer(const std::shared_ptr<Freelancer> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("freelancer"));
}

std::shared_ptr<LiveStream> LiveStream::fromObject(const PFObject &object)
{
    auto stream = std::make_shared<LiveStream>();
    stream->mutableState() = object.state();
    return stream;
}
