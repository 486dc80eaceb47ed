'use strict';
// Demo accounts for a newcomer's first run: one freelancer per role and a newsroom editor
// who has written to the first freelancer. All addresses use reserved example domains.

const { broadcastSkills, printSkills, citizenSkills } = require('./catalogue');

const password = 'Vantrel2026';

const editor = {
  email: 'claire.ashworth@northgate-news.example',
  workEmail: 'claire.ashworth@northgate-news.example',
  firstName: 'Claire',
  lastName: 'Ashworth',
  position: 'Foreign News Editor',
  organisationName: 'Northgate Evening News',
  officeCountryCode: '+44',
  officeTelephoneNumber: '1614960321',
  mobileCountryCode: '+44',
  mobileTelephoneNumber: '7700900412',
  isNewsDeskUser: true,
  isAuthorised: true,
  doesPasswordRequireToBeChanged: false,
};

const freelancers = [
  {
    role: 'Broadcast',
    user: {
      email: 'tom.okafor@demo.vantrel.example',
      workEmail: 'tom.okafor@demo.vantrel.example',
      firstName: 'Tom',
      lastName: 'Okafor',
      position: 'Camera operator and sound recordist',
      mobileCountryCode: '+44',
      mobileTelephoneNumber: '7700900123',
      officeCountryCode: '+44',
      officeTelephoneNumber: '1614960100',
    },
    town: 'Manchester',
    country: 'United Kingdom',
    location: [53.4808, -2.2426],
    skills: ['TV Camera', 'TV Sound', 'TV Camera/Sound/Edit'],
    languages: ['English', 'Yoruba'],
    equipment: ['Sony FX9', 'Sennheiser MKH 416', 'LiveU Solo'],
    myWork: 'Twelve years shooting news and documentaries across the north of England and West Africa.',
    liveStream: {
      title: 'Manchester city centre',
      streamDescription: 'Live camera on request for breaking news in Greater Manchester.',
      streamURL: 'https://stream.demo.vantrel.example/tom-okafor',
      isAvailable: true,
    },
  },
  {
    role: 'Print',
    user: {
      email: 'lena.fischer@demo.vantrel.example',
      workEmail: 'lena.fischer@demo.vantrel.example',
      firstName: 'Lena',
      lastName: 'Fischer',
      position: 'Reporter and photographer',
      mobileCountryCode: '+49',
      mobileTelephoneNumber: '15550123456',
    },
    town: 'Berlin',
    country: 'Germany',
    location: [52.52, 13.405],
    skills: ['Writer', 'Photographer'],
    languages: ['German', 'English', 'Polish'],
    equipment: ['Nikon Z6 II', 'Laptop with satellite uplink'],
    myWork: 'Politics and culture from Berlin for English and German language titles.',
  },
  {
    role: 'Multi-Skilled',
    user: {
      email: 'sofia.marques@demo.vantrel.example',
      workEmail: 'sofia.marques@demo.vantrel.example',
      firstName: 'Sofia',
      lastName: 'Marques',
      position: 'Video journalist',
      mobileCountryCode: '+351',
      mobileTelephoneNumber: '912345678',
    },
    town: 'Lisbon',
    country: 'Portugal',
    location: [38.7223, -9.1393],
    skills: [...broadcastSkills, ...printSkills],
    languages: ['Portuguese', 'English', 'Spanish'],
    equipment: ['Canon C70', 'DJI Mini 3 Pro', 'Zoom F6'],
    myWork: 'Films, writes and edits for broadcast, print and online clients from the Iberian peninsula.',
  },
  {
    role: 'Citizen Journalist',
    user: {
      email: 'amir.haddad@demo.vantrel.example',
      workEmail: 'amir.haddad@demo.vantrel.example',
      firstName: 'Amir',
      lastName: 'Haddad',
      position: 'Student',
      mobileCountryCode: '+33',
      mobileTelephoneNumber: '612345678',
    },
    town: 'Marseille',
    country: 'France',
    location: [43.2965, 5.3698],
    skills: citizenSkills,
    languages: ['French', 'Arabic'],
    equipment: ['Smartphone with gimbal'],
    myWork: 'Streams local events and demonstrations in Marseille as they happen.',
  },
];

const dayStart = (daysAhead) => {
  const d = new Date();
  d.setUTCHours(0, 0, 0, 0);
  d.setUTCDate(d.getUTCDate() + daysAhead);
  return { __type: 'Date', iso: d.toISOString() };
};

function freelancerRecord(entry) {
  const slug = entry.user.firstName.toLowerCase();
  return {
    lastKnownLocation: { __type: 'GeoPoint', latitude: entry.location[0], longitude: entry.location[1] },
    locationDate: { __type: 'Date', iso: new Date().toISOString() },
    skills: entry.skills,
    notAvailable: [dayStart(3), dayStart(4), dayStart(10)],
    languages: entry.languages,
    myEquipment: entry.equipment,
    myTown: entry.town,
    myCountry: entry.country,
    isWhatsApp: true,
    myWork: entry.myWork,
    cvURL: `https://portfolio.demo.vantrel.example/${slug}/cv.pdf`,
    workExampleOne: `https://portfolio.demo.vantrel.example/${slug}/one`,
    workExampleTwo: `https://portfolio.demo.vantrel.example/${slug}/two`,
    twitterURL: `https://social.demo.vantrel.example/@${slug}`,
    linkedINURL: `https://profiles.demo.vantrel.example/${slug}`,
  };
}

const messages = [
  {
    title: 'Welcome to Vantrel PRO',
    messageBody: 'Hi Tom, we saw your profile on Vantrel and may need a crew in Manchester soon.',
    hasBeenRead: true,
  },
  {
    title: 'Crew needed Thursday',
    messageBody: 'Are you free on Thursday from 08:00 for a half-day shoot at the town hall? Kit and sound needed.',
    hasBeenRead: false,
  },
  {
    title: 'Live hit tonight',
    messageBody: 'Could you do a live two-way at 18:30 outside the stadium? Please confirm your rate.',
    hasBeenRead: false,
  },
];

module.exports = { password, editor, freelancers, freelancerRecord, messages };
