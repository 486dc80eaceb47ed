'use strict';
// The four roles a freelancer registers under and the skills offered within each.
// Titles are stored exactly as the app compares them.

const broadcastSkills = [
  'TV Camera',
  'TV Sound',
  'TV Video Editor',
  'TV Camera/Sound/Edit',
  'TV Video Journalist (VJ)',
  'TV Presenter',
  'TV Reporter',
  'TV Producer',
  'Radio Reporter/Presenter',
  'Broadcast Fixer',
];
const printSkills = ['Writer', 'Photographer', 'Fixer'];
const citizenSkills = ['User-Generator/Live-Streamer'];

const skillDescriptions = {
  'TV Camera': 'Camera operator for news and features, with own kit or on hire.',
  'TV Sound': 'Sound recordist for location and studio work.',
  'TV Video Editor': 'Edits packages to broadcast standard, on site or remotely.',
  'TV Camera/Sound/Edit': 'Shoots, records sound and edits as a one-person crew.',
  'TV Video Journalist (VJ)': 'Finds, films, voices and cuts stories alone.',
  'TV Presenter': 'Presents to camera in studio or on location.',
  'TV Reporter': 'Reports for television, live and recorded.',
  'TV Producer': 'Plans and produces items, shoots and live coverage.',
  'Radio Reporter/Presenter': 'Reports and presents for radio and podcasts.',
  'Broadcast Fixer': 'Local contacts, permits, transport and translation for broadcast crews.',
  Writer: 'Writes news, features and analysis for print and online.',
  Photographer: 'News, sports and feature photography.',
  Fixer: 'Local contacts, access and translation for print journalists.',
  'User-Generator/Live-Streamer': 'Captures and streams events as they happen, from a phone or small camera.',
};

const categories = [
  {
    categoryTitle: 'Broadcast',
    categoryDescription: 'Television and radio crews, reporters, presenters and producers.',
    skills: broadcastSkills,
  },
  {
    categoryTitle: 'Print',
    categoryDescription: 'Writers, photographers and fixers for newspapers, magazines and online outlets.',
    skills: printSkills,
  },
  {
    categoryTitle: 'Multi-Skilled',
    categoryDescription: 'Freelancers who report, produce and film for broadcast, print and online outlets alike.',
    skills: [...broadcastSkills, ...printSkills],
  },
  {
    categoryTitle: 'Citizen Journalist',
    categoryDescription: 'Members of the public who capture and share news as it happens.',
    skills: citizenSkills,
  },
];

module.exports = { categories, skillDescriptions, broadcastSkills, printSkills, citizenSkills };
