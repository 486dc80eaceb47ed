'''A desktop portal with a file chooser, for tests, speaking org.freedesktop.portal.FileChooser.

OpenFile answers a moment later with a Response signal on the request object that the caller's
handle_token names (as portals do), or on a path of its own (as old portals did). Control:
SetAnswer(u response, as uris, b ownPath) on org.freedesktop.DBus.Mock: 0 picked, 1 cancelled, 2 failed.
'''

import dbus
from gi.repository import GLib

from dbusmock import MOCK_IFACE, mockobject

BUS_NAME = 'org.freedesktop.portal.Desktop'
MAIN_OBJ = '/org/freedesktop/portal/desktop'
MAIN_IFACE = 'org.freedesktop.portal.FileChooser'
SYSTEM_BUS = False

REQUEST_IFACE = 'org.freedesktop.portal.Request'
STATE = {'response': 1, 'uris': [], 'own_path': False, 'requests': 0}


def load(_mock, _parameters):
    pass


@dbus.service.method(MAIN_IFACE, in_signature='ssa{sv}', out_signature='o', sender_keyword='sender')
def OpenFile(self, _parent, _title, options, sender=None):
    STATE['requests'] += 1
    if STATE['own_path']:
        path = MAIN_OBJ + '/request/portal/%d' % STATE['requests']
    else:
        path = MAIN_OBJ + '/request/' + sender[1:].replace('.', '_') + '/' + str(options['handle_token'])
    self.AddObject(path, REQUEST_IFACE, {}, [])
    GLib.timeout_add(100, answer, path, STATE['response'], list(STATE['uris']))
    return dbus.ObjectPath(path)


def answer(path, response, uris):
    results = {'uris': dbus.Array(uris, signature='s')} if uris else {}
    mockobject.objects[path].EmitSignal(REQUEST_IFACE, 'Response', 'ua{sv}',
                                        [dbus.UInt32(response), dbus.Dictionary(results, signature='sv')])
    return False


@dbus.service.method(MOCK_IFACE, in_signature='uasb', out_signature='')
def SetAnswer(_self, response, uris, own_path):
    STATE['response'] = int(response)
    STATE['uris'] = [str(u) for u in uris]
    STATE['own_path'] = bool(own_path)

