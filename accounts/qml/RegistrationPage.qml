import QtQuick
import QtQuick.Controls
import Vantrel.Ui

// The registration form, laid out as a static table in sections: role, about you, telephone,
// home, password and the terms. Every field is capped at the controller's maximum length.
Item {
    id: page

    required property QtObject controller

    component SectionHeader: Label {
        width: parent.width
        topPadding: 10
        font.bold: true
        color: "#6d6d72"
    }
    component FormField: OutletTextField {
        width: parent.width
        maximumLength: page.controller.maximumFieldLength
    }

    ScrollingForm {
        objectName: "registrationForm"
        anchors.fill: parent
        spacing: 10

        SectionHeader { text: qsTr("Your role") }
        Row {
            width: parent.width
            spacing: 8
            FormField {
                outlet: page.controller.roleTextField
                width: parent.width - info.width - parent.spacing
            }
            OutletButton {
                id: info
                outlet: page.controller.roleInfoButton
                anchors.verticalCenter: parent.verticalCenter
            }
        }

        SectionHeader { text: qsTr("About you") }
        FormField { outlet: page.controller.firstNameTextField }
        FormField { outlet: page.controller.lastNameTextField }
        FormField { outlet: page.controller.emailAddressTextField }

        SectionHeader { text: qsTr("Telephone") }
        Row {
            width: parent.width
            spacing: 8
            FormField { outlet: page.controller.countryCodeTextField; width: 110 }
            FormField { outlet: page.controller.mobileNumberTextField; width: parent.width - 118 }
        }
        Row {
            spacing: 10
            OutletSwitch { outlet: page.controller.whatsAppSwitch }
            Label {
                anchors.verticalCenter: parent.verticalCenter
                text: qsTr("I use WhatsApp on this number")
            }
        }
        Row {
            width: parent.width
            spacing: 8
            FormField { outlet: page.controller.workCountryCodeTextField; width: 110 }
            FormField { outlet: page.controller.workNumberTextField; width: parent.width - 118 }
        }

        SectionHeader { text: qsTr("Home") }
        FormField { outlet: page.controller.homeTownTextField }
        FormField { outlet: page.controller.homeCountryTextField }

        SectionHeader { text: qsTr("Password") }
        FormField { outlet: page.controller.passwordTextField }
        FormField { outlet: page.controller.confirmPasswordTextField }

        Row {
            width: parent.width
            spacing: 10
            OutletSwitch {
                id: agree
                outlet: page.controller.confirmSwitch
                anchors.verticalCenter: parent.verticalCenter
            }
            OutletButton {
                outlet: page.controller.termsButton
                width: parent.width - agree.width - parent.spacing
                anchors.verticalCenter: parent.verticalCenter
            }
        }
    }
}
