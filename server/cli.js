'use strict';
// Maintenance tasks that server/backend runs against a started backend with the master key:
//   node cli.js seed-catalogue               roles and skills (every backend, tests need them)
//   node cli.js seed-demo                    demo freelancers, a newsroom editor and messages
//   node cli.js send-message EMAIL TITLE BODY  a message from the demo editor to EMAIL

const settingsModule = require('./lib/settings');
const { categories, skillDescriptions } = require('./lib/catalogue');
const demo = require('./lib/demoData');

class RestClient {
  constructor(settings) {
    this.origin = settings.origin;
    this.headers = {
      'X-Parse-Application-Id': settings.appId,
      'X-Parse-Master-Key': settingsModule.readSecret(settings.masterKeyFile),
      'Content-Type': 'application/json',
    };
  }

  async call(method, path, body) {
    const response = await fetch(this.origin + path, {
      method,
      headers: this.headers,
      body: body === undefined ? undefined : JSON.stringify(body),
      signal: AbortSignal.timeout(30000),
    });
    const text = await response.text();
    let json;
    try {
      json = JSON.parse(text);
    } catch {
      throw new Error(`${method} ${path}: HTTP ${response.status}, not JSON: ${text.slice(0, 200)}`);
    }
    if (!response.ok) {
      throw new Error(`${method} ${path}: HTTP ${response.status} code ${json.code}: ${json.error}`);
    }
    return json;
  }

  async find(className, where = {}) {
    const query = new URLSearchParams({ where: JSON.stringify(where), limit: '1000' });
    return (await this.call('GET', `/classes/${className}?${query}`)).results;
  }

  // Creates the objects in batches; answers their objectIds in order.
  async createAll(className, objects) {
    const ids = [];
    for (let start = 0; start < objects.length; start += 50) {
      const requests = objects.slice(start, start + 50).map((body) => ({
        method: 'POST',
        path: `/classes/${className}`,
        body,
      }));
      const results = await this.call('POST', '/batch', { requests });
      for (const result of results) {
        if (!result.success) {
          throw new Error(`creating ${className}: code ${result.error.code}: ${result.error.error}`);
        }
        ids.push(result.success.objectId);
      }
    }
    return ids;
  }
}

const pointer = (className, objectId) => ({ __type: 'Pointer', className, objectId });

async function seedCatalogue(rest) {
  const existing = await rest.find('FreelanceCategory');
  const byTitle = new Map(existing.map((c) => [c.categoryTitle, c.objectId]));
  const missing = categories.filter((c) => !byTitle.has(c.categoryTitle));
  const ids = await rest.createAll('FreelanceCategory', missing.map(({ categoryTitle, categoryDescription }) => (
    { categoryTitle, categoryDescription })));
  missing.forEach((c, i) => byTitle.set(c.categoryTitle, ids[i]));

  const skills = await rest.find('FreelanceSubCategory');
  const have = new Set(skills.map((s) => `${s.category && s.category.objectId}/${s.title}`));
  const newSkills = [];
  for (const category of categories) {
    const categoryId = byTitle.get(category.categoryTitle);
    for (const title of category.skills) {
      if (!have.has(`${categoryId}/${title}`)) {
        newSkills.push({
          title,
          subCategoryDescription: skillDescriptions[title],
          category: pointer('FreelanceCategory', categoryId),
        });
      }
    }
  }
  await rest.createAll('FreelanceSubCategory', newSkills);
  if (missing.length || newSkills.length) {
    console.log(`backend: seeded ${missing.length} roles and ${newSkills.length} skills`);
  }
  return byTitle;
}

// The account of an address typed in any letter case.
async function findUserByEmail(rest, email) {
  const exactly = { $regex: `^${email.replace(/[.*+?^${}()|[\]\\]/g, '\\$&')}$`, $options: 'i' };
  const users = await rest.find('_User', { $or: [{ email: exactly }, { username: exactly }] });
  return users[0];
}

async function signUp(rest, fields) {
  const created = await rest.call('POST', '/users', { ...fields, username: fields.email });
  return created.objectId;
}

// The account state every demo freelancer needs to sign in to the app.
const signInReady = { isAuthorised: true, doesPasswordRequireToBeChanged: false, isNewsDeskUser: false };

// Prints one line per demo account; tests read the "demo sign-in" lines.
function printSignIns() {
  for (const entry of demo.freelancers) {
    console.log(`backend: demo sign-in: ${entry.user.email} / ${demo.password} (${entry.role})`);
  }
  console.log(`backend: demo newsroom editor (for the newsroom app, not this one): ${demo.editor.email} / ${demo.password}`);
}

async function seedDemo(rest) {
  const categoryIds = await seedCatalogue(rest);
  if (await findUserByEmail(rest, demo.editor.email)) {
    // Demo data of an earlier version may lack the state that lets its freelancers sign in.
    for (const entry of demo.freelancers) {
      const user = await findUserByEmail(rest, entry.user.email);
      if (user && Object.entries(signInReady).some(([key, value]) => Boolean(user[key]) !== value)) {
        await rest.call('PUT', `/users/${user.objectId}`, signInReady);
      }
    }
    printSignIns();
    return;
  }
  const editorId = await signUp(rest, { ...demo.editor, password: demo.password });
  const freelancerUserIds = [];
  for (const entry of demo.freelancers) {
    const userId = await signUp(rest, { ...entry.user, ...signInReady, password: demo.password });
    freelancerUserIds.push(userId);
    const [freelancerId] = await rest.createAll('Freelancer', [{
      ...demo.freelancerRecord(entry),
      user: pointer('_User', userId),
      freelanceCategory: pointer('FreelanceCategory', categoryIds.get(entry.role)),
    }]);
    if (entry.liveStream) {
      await rest.createAll('LiveStream', [{ ...entry.liveStream, freelancer: pointer('Freelancer', freelancerId) }]);
    }
  }
  await rest.createAll('Message', demo.messages.map((m) => ({
    ...m,
    from: pointer('_User', editorId),
    to: pointer('_User', freelancerUserIds[0]),
  })));
  console.log(`backend: seeded ${demo.freelancers.length} demo freelancers, an editor and ${demo.messages.length} messages`);
  printSignIns();
}

async function sendMessage(rest, email, title, body) {
  const editor = await findUserByEmail(rest, demo.editor.email);
  if (!editor) {
    throw new Error(`the demo editor ${demo.editor.email} is not in this backend (throwaway backends have no demo users)`);
  }
  const recipient = await findUserByEmail(rest, email);
  if (!recipient) {
    throw new Error(`no user with the e-mail address ${email}`);
  }
  const [id] = await rest.createAll('Message', [{
    title,
    messageBody: body,
    hasBeenRead: false,
    from: pointer('_User', editor.objectId),
    to: pointer('_User', recipient.objectId),
  }]);
  console.log(`backend: message ${id} sent from ${demo.editor.firstName} ${demo.editor.lastName} to ${email}`);
}

async function main(argv) {
  const rest = new RestClient(settingsModule.load());
  const [command, ...args] = argv;
  switch (command) {
    case 'seed-catalogue':
      await seedCatalogue(rest);
      break;
    case 'seed-demo':
      await seedDemo(rest);
      break;
    case 'send-message':
      if (args.length !== 3 || args.some((a) => !a)) {
        throw new Error('usage: send-message EMAIL TITLE BODY');
      }
      await sendMessage(rest, ...args);
      break;
    default:
      throw new Error(`unknown task "${command}" (seed-catalogue, seed-demo, send-message)`);
  }
}

main(process.argv.slice(2)).catch((error) => {
  console.error(`backend: ${error.message}`);
  process.exit(1);
});
