'use strict';
// LiveQuery under the rules of queries, and only for as long as its session lasts.
//
// - Connecting needs a session that is alive now, checked in the database rather than in
//   LiveQuery's own cache (which trusts a token for a few seconds after it has ended), and an
//   account that may sign in; so does a subscription that names a session of its own.
// - A subscription to messages is confined to the messages its subscriber is a party to before
//   any constraint of its own is looked at: those constraints are never tried on other
//   people's messages, so they cannot probe them, not even by the time they take.
// - When sessions end (authorisation withdrawn, deletion asked, password changed, logout), the
//   connections using any session that no longer exists are closed at once.

const { refusesSignIn } = require('./userRules');

const master = { useMasterKey: true };
const PAGE = 500; // session tokens looked up at a time

function createLiveQueryAccess() {
  let server = null;

  const invalidSession = (Parse) => new Parse.Error(Parse.Error.INVALID_SESSION_TOKEN, 'Invalid session token');

  async function liveUser(Parse, token) {
    const session = typeof token === 'string' && token !== '' && await new Parse.Query(Parse.Session)
      .equalTo('sessionToken', token).greaterThan('expiresAt', new Date()).include('user').first(master);
    const user = session && session.get('user');
    if (!user || refusesSignIn(user)) {
      throw invalidSession(Parse);
    }
    return user;
  }

  const tokensOf = (client) => [client.sessionToken, ...[...client.subscriptionInfos.values()].map((i) => i.sessionToken)]
    .filter(Boolean);

  async function closeEndedSessions(Parse) {
    const clients = server ? [...server.clients.values()] : [];
    const used = [...new Set(clients.flatMap(tokensOf))];
    const alive = new Set();
    for (let i = 0; i < used.length; i += PAGE) {
      const live = await new Parse.Query(Parse.Session).containedIn('sessionToken', used.slice(i, i + PAGE))
        .greaterThan('expiresAt', new Date()).select('sessionToken').limit(PAGE).find(master);
      live.forEach((session) => alive.add(session.get('sessionToken')));
    }
    for (const client of clients.filter((c) => tokensOf(c).some((token) => !alive.has(token)))) {
      client.parseWebSocket.send(JSON.stringify({ op: 'error', code: 209, error: 'Invalid session token', reconnect: false }));
      client.parseWebSocket.ws.close();
    }
  }

  function register(Parse) {
    Parse.Cloud.beforeConnect((request) => liveUser(Parse, request.sessionToken));

    Parse.Cloud.beforeSubscribe('Message', async (request) => {
      // Without a session of its own a subscription uses the connection's, checked on connecting.
      const user = request.sessionToken ? await liveUser(Parse, request.sessionToken) : request.user;
      if (!user) {
        throw invalidSession(Parse);
      }
      const me = { __type: 'Pointer', className: '_User', objectId: user.id };
      const asked = request.query.toJSON().where || {};
      const mine = { $or: [{ from: me }, { to: me }] };
      request.query._where = Object.keys(asked).length ? { $and: [mine, asked] } : mine;
    });

    Parse.Cloud.afterLogout(() => closeEndedSessions(Parse));
  }

  return {
    register,
    // The LiveQuery server, once it runs.
    attach: (liveQueryServer) => {
      server = liveQueryServer;
    },
    closeEndedSessions,
  };
}

module.exports = { createLiveQueryAccess };
