"""How secrets cross the bus in a session of the fake Secret Service (Secret Service API, "Transfer of Secrets")."""

import os
import secrets

import dbus
from cryptography.hazmat.primitives import hashes, padding
from cryptography.hazmat.primitives.ciphers import Cipher, algorithms, modes
from cryptography.hazmat.primitives.kdf.hkdf import HKDF

ENCRYPTED = "dh-ietf1024-sha256-aes128-cbc-pkcs7"
BLOCK = 16  # bytes
PRIME = int(  # of the group whose generator is 2 (RFC 2409, 6.2)
    "FFFFFFFFFFFFFFFFC90FDAA22168C234C4C6628B80DC1CD129024E088A67CC74020BBEA63B139B22514A08798E3404DD"
    "EF9519B3CD3A431B302B0A6DF25F14374FE1356D6D51C245E485B576625E7EC6F44C42E9A637ED6B0BFF5CB6F406B7ED"
    "EE386BFB5A899FA5AE9F24117C4B1FE649286651ECE65381FFFFFFFFFFFFFFFF",
    16,
)


class InTheClear:
    answer = dbus.String("", variant_level=1)

    def seal(self, secret):
        return b"", secret

    def open(self, _vector, value):
        return value


class Sealed:
    def __init__(self, theirs):
        private = secrets.randbelow(PRIME)
        self.answer = dbus.ByteArray(pow(2, private, PRIME).to_bytes(128, "big"), variant_level=1)
        shared = pow(int.from_bytes(theirs, "big"), private, PRIME).to_bytes(128, "big")
        self._key = HKDF(hashes.SHA256(), 16, None, None).derive(shared)

    def _cipher(self, vector):
        return Cipher(algorithms.AES(self._key), modes.CBC(vector))

    def _sealed_blocks(self, blocks):
        vector = os.urandom(BLOCK)
        encryptor = self._cipher(vector).encryptor()
        return vector, encryptor.update(blocks) + encryptor.finalize()

    def seal(self, secret):
        padder = padding.PKCS7(8 * BLOCK).padder()
        return self._sealed_blocks(padder.update(secret) + padder.finalize())

    def seal_badly(self, fault, secret):
        vector, value = self.seal(secret)
        return {
            "no vector": (b"", value),
            "a short vector": (vector[:-1], value),
            "a long vector": (vector + b"\0", value),
            "no value": (vector, b""),
            "half a block": (vector, value[:-1]),
            "a padding of 0": self._sealed_blocks(b"\0" * BLOCK),
            "a padding of 17": self._sealed_blocks(b"\x11" * BLOCK),
        }[fault]

    def open(self, vector, value):
        decryptor = self._cipher(bytes(vector)).decryptor()
        unpadder = padding.PKCS7(8 * BLOCK).unpadder()
        padded = decryptor.update(bytes(value)) + decryptor.finalize()
        return unpadder.update(padded) + unpadder.finalize()
