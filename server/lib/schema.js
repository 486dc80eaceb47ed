'use strict';
// The classes, keys, class-level permissions and indexes of the Vantrel PRO backend.
// Parse Server applies them at start-up with the master key; clients can neither create
// classes nor add keys (addField is closed everywhere and the schema routes are locked).

const str = { type: 'String' };
const bool = { type: 'Boolean' };
const date = { type: 'Date' };
const array = { type: 'Array' };
const geo = { type: 'GeoPoint' };
const file = { type: 'File' };
const pointer = (targetClass) => ({ type: 'Pointer', targetClass });
const { ROLE: NEWSROOM } = require('./newsroom');

const nobody = {};
const everyone = { '*': true };
const signedIn = { requiresAuthentication: true };

const userFields = {
  firstName: str,
  lastName: str,
  position: str,
  workEmail: str,
  officeCountryCode: str,
  officeTelephoneNumber: str,
  mobileCountryCode: str,
  mobileTelephoneNumber: str,
  linkedInURL: str,
  exampleURL: str,
  exampleTwoURL: str,
  organisationName: str,
  editorsName: str,
  editorsEmailAddress: str,
  editorsCountryCode: str,
  editorsTelephoneNumber: str,
  isEditorSupervisor: bool,
  superiorsName: str,
  superiorsEmail: str,
  superiorsCountryCode: str,
  superiorTelephoneNumber: str,
  organisationURL: str,
  organisationExampleURL: str,
  organisationExampleTwoURL: str,
  profilePicture: file,
  isAuthorised: bool,
  doesPasswordRequireToBeChanged: bool,
  deviceToken: str,
  isNewsDeskUser: bool,
  shouldDeleteAccount: bool,
};

// What others read of a user. A freelancer sees these keys of the people they share a message
// with (names for the message screens, the mobile number and work address for reply notices);
// a newsroom account sees the profile keys of freelancers. Which rows are readable at all is
// decided in userRules.js.
const messagePartnerKeys = ['firstName', 'lastName', 'workEmail', 'mobileCountryCode', 'mobileTelephoneNumber'];
const newsroomKeys = [...messagePartnerKeys, 'position', 'officeCountryCode', 'officeTelephoneNumber', 'profilePicture'];
const allUserKeys = ['username', 'email', 'emailVerified', 'authData', ...Object.keys(userFields)];
const hiddenBut = (visible) => allUserKeys.filter((key) => !visible.includes(key));

const freelancerFields = {
  user: pointer('_User'),
  lastKnownLocation: geo,
  locationDate: date,
  freelanceCategory: pointer('FreelanceCategory'),
  skills: array,
  notAvailable: array,
  languages: array,
  facebookURL: str,
  twitterURL: str,
  linkedINURL: str,
  youtubeURL: str,
  instaURL: str,
  myWork: str,
  cvURL: str,
  myEquipment: array,
  myTown: str,
  myCountry: str,
  isWhatsApp: bool,
  workExampleOne: str,
  workExampleTwo: str,
  workExampleThree: str,
  workExampleFour: str,
};

// Records that signed-in users read and write under their ACLs (set by the triggers); the
// app never deletes one.
const ownedRecordPermissions = {
  find: signedIn,
  count: signedIn,
  get: signedIn,
  create: signedIn,
  update: signedIn,
  delete: nobody,
  addField: nobody,
  protectedFields: {},
};

const readOnlyPermissions = (readers) => ({
  find: readers,
  count: readers,
  get: readers,
  create: nobody,
  update: nobody,
  delete: nobody,
  addField: nobody,
  protectedFields: {},
});

const masterOnlyPermissions = readOnlyPermissions(nobody);

const definitions = [
  {
    className: '_User',
    fields: userFields,
    classLevelPermissions: {
      find: signedIn,
      count: nobody,
      get: signedIn,
      create: everyone,
      update: everyone,
      delete: nobody,
      addField: nobody,
      protectedFields: { '*': hiddenBut(messagePartnerKeys), [`role:${NEWSROOM}`]: hiddenBut(newsroomKeys) },
    },
  },
  {
    // Its user (or, before anyone signed in on the device, the device) reads and changes it.
    className: '_Installation',
    fields: { user: pointer('_User') },
    classLevelPermissions: {
      find: nobody,
      count: nobody,
      get: signedIn,
      create: everyone,
      update: everyone,
      delete: nobody,
      addField: nobody,
      protectedFields: {},
    },
  },
  // Built-in classes the app does not use: the master key only.
  ...['_Role', '_Product'].map((className) => ({
    className,
    fields: {},
    classLevelPermissions: masterOnlyPermissions,
  })),
  {
    className: 'Freelancer',
    fields: freelancerFields,
    indexes: { user_createdAt: { user: 1, createdAt: -1 } },
    classLevelPermissions: ownedRecordPermissions,
  },
  {
    className: 'FreelanceCategory',
    fields: { categoryTitle: str, categoryDescription: str },
    classLevelPermissions: readOnlyPermissions(everyone),
  },
  {
    className: 'FreelanceSubCategory',
    fields: { title: str, subCategoryDescription: str, category: pointer('FreelanceCategory') },
    indexes: { category: { category: 1 } },
    classLevelPermissions: readOnlyPermissions(everyone),
  },
  {
    className: 'Message',
    fields: {
      title: str,
      messageBody: str,
      from: pointer('_User'),
      to: pointer('_User'),
      hasBeenRead: bool,
    },
    indexes: {
      to_createdAt: { to: 1, createdAt: -1 },
      from_createdAt: { from: 1, createdAt: -1 },
    },
    classLevelPermissions: ownedRecordPermissions,
  },
  {
    className: 'LiveStream',
    fields: {
      freelancer: pointer('Freelancer'),
      title: str,
      streamDescription: str,
      streamURL: str,
      isAvailable: bool,
    },
    indexes: { freelancer_createdAt: { freelancer: 1, createdAt: -1 } },
    classLevelPermissions: ownedRecordPermissions,
  },
  {
    className: 'NewsHotSpot',
    fields: { title: str, location: geo, subtitle: str },
    classLevelPermissions: readOnlyPermissions(signedIn),
  },
  {
    className: 'TrendingSubject',
    fields: { title: str, subtitle: str, urls: array },
    classLevelPermissions: readOnlyPermissions(signedIn),
  },
  {
    // What the notice functions would have sent when no provider is configured,
    // and the delivery result when one is. Only the master key sees it.
    className: 'NoticeOutbox',
    fields: {
      channel: str,
      kind: str,
      recipient: str,
      subject: str,
      body: str,
      requestedBy: pointer('_User'),
      delivery: str,
      deliveryError: str,
    },
    classLevelPermissions: masterOnlyPermissions,
  },
];

module.exports = { definitions, messagePartnerKeys, newsroomKeys };
