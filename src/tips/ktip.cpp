#include "ktip.h"

KTip::KTip(QObject* parent, QObject* host)
    : QObject(parent)
    , m_host(host)
{
}

KTip::~KTip() = default;

int KTip::getTipType() const
{
    if (m_tipTitle.isEmpty() || m_tipContent.isEmpty())
        return IncompleteTip;
    const bool link = !m_tipLink.isEmpty();
    const bool picture = !m_tipPicUrl.isEmpty();
    if (link)
        return picture ? FullTip : LinkTip;
    return picture ? PictureTip : TextTip;
}

void KTip::setTipPicPosition(const QString& position)
{
    m_tipPicPosition = position.trimmed().toInt(nullptr, 10);
}
