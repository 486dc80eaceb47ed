'''A fingerprint daemon for tests, speaking fprintd's D-Bus interface.

One reader at /net/reactivated/Fprint/Device/0 with the right index finger enrolled.
Test controls on org.freedesktop.DBus.Mock of the manager object:
  SetEnrolledFingers(as)   fingers the reader knows for every user
  SetVerifyResults(as)     VerifyStatus results sent, in order, after the next VerifyStart
  RemoveDevice()
  GetCalls() -> as         device method calls so far ("Claim", "VerifyStart any", ...)
'''

import dbus
from gi.repository import GLib

from dbusmock import MOCK_IFACE, mockobject

BUS_NAME = 'net.reactivated.Fprint'
MAIN_OBJ = '/net/reactivated/Fprint/Manager'
MAIN_IFACE = 'net.reactivated.Fprint.Manager'
SYSTEM_BUS = True

DEVICE_PATH = '/net/reactivated/Fprint/Device/0'
DEVICE_IFACE = 'net.reactivated.Fprint.Device'
ERROR = 'net.reactivated.Fprint.Error.'
# Results after which the reader keeps waiting for another finger.
RETRY_RESULTS = ('verify-retry-scan', 'verify-swipe-too-short', 'verify-finger-not-centered',
                 'verify-remove-and-retry')

STATE = {'enrolled': ['right-index-finger'], 'results': ['verify-match'], 'claimed': False,
         'verifying': False, 'calls': []}


def fail(name, message):
    raise dbus.exceptions.DBusException(message, name=ERROR + name)


def device_present():
    return DEVICE_PATH in mockobject.objects


def load(mock, _parameters):
    mock.AddMethods(MAIN_IFACE, [
        ('GetDefaultDevice', '', 'o', default_device),
        ('GetDevices', '', 'ao', devices),
    ])
    add_device(mock)


def default_device(_self):
    if not device_present():
        fail('NoSuchDevice', 'No devices available')
    return dbus.ObjectPath(DEVICE_PATH)


def devices(_self):
    return dbus.Array([dbus.ObjectPath(DEVICE_PATH)] if device_present() else [], signature='o')


def add_device(mock):
    mock.AddObject(DEVICE_PATH, DEVICE_IFACE,
                   {'name': dbus.String('Test reader'), 'scan-type': dbus.String('press'),
                    'num-enroll-stages': dbus.Int32(5)}, [])
    device = mockobject.objects[DEVICE_PATH]
    device.AddMethods(DEVICE_IFACE, [
        ('Claim', 's', '', claim),
        ('Release', '', '', release),
        ('VerifyStart', 's', '', verify_start),
        ('VerifyStop', '', '', verify_stop),
        ('ListEnrolledFingers', 's', 'as', list_enrolled),
    ])


def claim(_self, _user):
    STATE['calls'].append('Claim')
    if STATE['claimed']:
        fail('AlreadyInUse', 'Device was already claimed')
    STATE['claimed'] = True


def release(_self):
    STATE['calls'].append('Release')
    if not STATE['claimed']:
        fail('ClaimDevice', 'Device was not claimed before use')
    STATE['claimed'] = False
    STATE['verifying'] = False


def list_enrolled(_self, _user):
    if not STATE['enrolled']:
        fail('NoEnrolledPrints', 'Failed to discover prints')
    return dbus.Array(STATE['enrolled'], signature='s')


def verify_start(_self, finger):
    STATE['calls'].append('VerifyStart ' + finger)
    if not STATE['claimed']:
        fail('ClaimDevice', 'Device was not claimed before use')
    if not STATE['enrolled']:
        fail('NoEnrolledPrints', 'No fingerprints enrolled')
    if STATE['verifying']:
        fail('AlreadyInUse', 'Verification already in progress')
    STATE['verifying'] = True
    results = list(STATE['results'])
    # Answer after the method has returned, one result at a time, as a real reader does.
    GLib.timeout_add(60, send_results, results)


def send_results(results):
    if not STATE['verifying'] or not device_present():
        return False
    result = results.pop(0)
    done = result not in RETRY_RESULTS or not results
    mockobject.objects[DEVICE_PATH].EmitSignal(DEVICE_IFACE, 'VerifyStatus', 'sb', [result, done])
    if done:
        STATE['verifying'] = False
        return False
    return True


def verify_stop(_self):
    STATE['calls'].append('VerifyStop')
    if not STATE['verifying']:
        fail('NoActionInProgress', 'No verification in progress')
    STATE['verifying'] = False


@dbus.service.method(MOCK_IFACE, in_signature='as', out_signature='')
def SetEnrolledFingers(_self, fingers):
    STATE['enrolled'] = [str(f) for f in fingers]


@dbus.service.method(MOCK_IFACE, in_signature='as', out_signature='')
def SetVerifyResults(_self, results):
    STATE['results'] = [str(r) for r in results]


@dbus.service.method(MOCK_IFACE, in_signature='', out_signature='')
def RemoveDevice(self):
    if device_present():
        self.RemoveObject(DEVICE_PATH)
    STATE['claimed'] = False
    STATE['verifying'] = False


@dbus.service.method(MOCK_IFACE, in_signature='', out_signature='as')
def GetCalls(_self):
    return dbus.Array(STATE['calls'], signature='s')
