import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// What Vantrel PRO is, how accounts are authorised and where to get help.
Flickable {
    id: page

    required property QtObject controller

    contentHeight: column.implicitHeight + 48
    clip: true

    FormColumn {
        id: column

        availableWidth: page.width
        y: 24
        spacing: 12

        component Heading: Label {
            width: column.width
            font.pixelSize: 19
            font.bold: true
            wrapMode: Text.Wrap
            color: Theme.navigationBarColor
        }
        component Body: Label {
            width: column.width
            font.pixelSize: 15
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
        }

        Heading { text: qsTr("What Vantrel PRO is") }
        Body {
            text: qsTr("Vantrel PRO is where freelance media workers meet the newsrooms that hire them. Reporters, camera and sound crews, video journalists, radio presenters, live-streamers and citizen journalists keep a profile here that editors read in the Vantrel Newsdesk app: your contact details, role and skills, languages, equipment, CV and examples of your work.")
        }
        Body {
            text: qsTr("Mark the days you cannot work, show editors where you are and whether you are free to work now, and answer their messages, all from one place.")
        }

        Heading { text: qsTr("How accounts are authorised") }
        Body {
            text: qsTr("Register with your work e-mail address and the role that fits you best. Your account is ready as soon as you have registered: you are signed in at once and can sign in with your e-mail address and password from then on.")
        }
        Body {
            text: qsTr("If we set up your account for you, we send you a temporary password. The first time you sign in with it you choose a password of your own: at least 8 characters, with an upper-case letter, a lower-case letter and a digit.")
        }
        Body {
            text: qsTr("After one sign-in with your password, this device can sign you in with your fingerprint when a reader is fitted.")
        }

        Heading { text: qsTr("Getting help") }
        Body {
            text: qsTr("Forgotten your password? Type your e-mail address on the sign-in page and choose \"Forgot password?\": we send you a link to set a new one.")
        }
        Body {
            text: qsTr("For anything else, write to %1. If your account has not been authorised within 7 days, write to the Vantrel admin team at %2.")
                  .arg(page.controller.helpEmail).arg(page.controller.administratorEmail)
        }
        Body {
            visible: text.length > 0
            text: page.controller.versionText
            color: "grey"
        }
    }
}
