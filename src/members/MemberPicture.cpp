#include "members/MemberPicture.h"

#include "members/MemberRecord.h"
#include "members/MemberinfoNames.h"
#include "platform/Form.h"
#include "platform/Platform.h"
#include "session/Session.h"

#include <QFile>
#include <QFileInfo>

namespace marlet {

MemberPicture::MemberPicture(Session& session, Form& form)
    : m_session(session)
    , m_form(form)
{
}

QString MemberPicture::scannerProgram(const QString& serverFolder)
{
    const bool separated = serverFolder.endsWith(u'\\') || serverFolder.endsWith(u'/');
    const QChar separator = serverFolder.contains(u'/') ? u'/' : u'\\';
    return serverFolder + (separated ? QString() : QString(separator)) + QStringLiteral("pelcap.exe");
}

void MemberPicture::showPictureFrame()
{
    m_form[memberinfo::Frame27].setVisible(false);
    m_form[memberinfo::Frame26].setVisible(true);
}

void MemberPicture::addPicture()
{
    m_form[memberinfo::Frame26].setVisible(false);
    m_form[memberinfo::Frame27].setVisible(true);
    if (Control* save = m_form.control(memberinfo::Command27))
        save->setEnabled(true);
}

void MemberPicture::fromFile()
{
    FileDialogRequest request;
    request.title = QStringLiteral("Load Member's Picture from file ...");
    request.filter = QStringLiteral("Image files|*.jpg;*.gif;*.bmp|All files|*.*");
    const std::optional<QString> chosen = m_session.platform().fileDialog(request);
    showPictureFrame();
    if (!chosen || chosen->isEmpty())
        return;
    // A file of the limit or more is passed over without a word.
    QFile file(*chosen);
    if (QFileInfo(file).size() >= PictureSizeLimit || !file.open(QIODevice::ReadOnly))
        return;
    m_form[memberinfo::mPicture].setPicture(file.readAll());
}

void MemberPicture::scanner()
{
    Platform& platform = m_session.platform();
    // The front end ends once it has put its image on the clipboard; a front end that cannot start
    // leaves everything as it is.
    if (!platform.startProgram(scannerProgram(m_session.general.serverFolder()), {}, true))
        return;
    m_form[memberinfo::mPicture].setPicture(platform.clipboardImage());
    showPictureFrame();
}

void MemberPicture::selectImageSource()
{
    m_session.platform().selectImageSource();
}

void MemberPicture::blankImage()
{
    if (m_session.platform().messageBox(
            QStringLiteral("Do you want to remove the present image?"), MsgStyle::YesNoQuestionNoDefault)
        != MsgResult::Yes)
        return;
    m_form[memberinfo::mPicture].setPicture(QByteArray());
    showPictureFrame();
}

void MemberPicture::cancel()
{
    showPictureFrame();
}

} // namespace marlet
