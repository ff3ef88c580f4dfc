#include "history/FailingVFS.h"

namespace korvantis::test {
namespace {

FailingVFS* current = nullptr;
sqlite3_vfs* system = nullptr;

/// Our file; the system's own lies right behind it.
struct File {
  sqlite3_file base;
};

sqlite3_file* realOf(sqlite3_file* file) {
  return reinterpret_cast<sqlite3_file*>(reinterpret_cast<File*>(file) + 1);
}

// The calls that reach the disk may fail; each names the system's own method of the same name.
int close(sqlite3_file* file) {
  return realOf(file)->pMethods->xClose(realOf(file));
}
int read(sqlite3_file* file, void* bytes, int count, sqlite3_int64 offset) {
  const int error = current->next();
  return error ? error : realOf(file)->pMethods->xRead(realOf(file), bytes, count, offset);
}
int write(sqlite3_file* file, const void* bytes, int count, sqlite3_int64 offset) {
  const int error = current->next();
  return error ? error : realOf(file)->pMethods->xWrite(realOf(file), bytes, count, offset);
}
int truncate(sqlite3_file* file, sqlite3_int64 size) {
  const int error = current->next();
  return error ? error : realOf(file)->pMethods->xTruncate(realOf(file), size);
}
int sync(sqlite3_file*, int) {
  // No machine goes down in these tests, so nothing has to reach the disk.
  return current->next();
}
int fileSize(sqlite3_file* file, sqlite3_int64* size) {
  return realOf(file)->pMethods->xFileSize(realOf(file), size);
}
int lock(sqlite3_file* file, int level) {
  const int error = current->next();
  return error ? error : realOf(file)->pMethods->xLock(realOf(file), level);
}
int unlock(sqlite3_file* file, int level) {
  return realOf(file)->pMethods->xUnlock(realOf(file), level);
}
int checkReservedLock(sqlite3_file* file, int* result) {
  return realOf(file)->pMethods->xCheckReservedLock(realOf(file), result);
}
int fileControl(sqlite3_file* file, int operation, void* argument) {
  return realOf(file)->pMethods->xFileControl(realOf(file), operation, argument);
}
int sectorSize(sqlite3_file* file) {
  return realOf(file)->pMethods->xSectorSize(realOf(file));
}
int deviceCharacteristics(sqlite3_file* file) {
  return realOf(file)->pMethods->xDeviceCharacteristics(realOf(file));
}
int shmMap(sqlite3_file* file, int region, int size, int isWritten, void volatile** address) {
  const int error = current->next();
  return error ? error
               : realOf(file)->pMethods->xShmMap(realOf(file), region, size, isWritten, address);
}
int shmLock(sqlite3_file* file, int offset, int count, int flags) {
  return realOf(file)->pMethods->xShmLock(realOf(file), offset, count, flags);
}
void shmBarrier(sqlite3_file* file) {
  realOf(file)->pMethods->xShmBarrier(realOf(file));
}
int shmUnmap(sqlite3_file* file, int isDeleted) {
  return realOf(file)->pMethods->xShmUnmap(realOf(file), isDeleted);
}

constexpr sqlite3_io_methods methods{2,
                                     close,
                                     read,
                                     write,
                                     truncate,
                                     sync,
                                     fileSize,
                                     lock,
                                     unlock,
                                     checkReservedLock,
                                     fileControl,
                                     sectorSize,
                                     deviceCharacteristics,
                                     shmMap,
                                     shmLock,
                                     shmBarrier,
                                     shmUnmap,
                                     nullptr,
                                     nullptr};

int open(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  file->pMethods = nullptr;
  if (current->next() != SQLITE_OK) return SQLITE_CANTOPEN;
  const int result = system->xOpen(system, name, realOf(file), flags, outFlags);
  if (result == SQLITE_OK) file->pMethods = &methods;
  return result;
}

int remove(sqlite3_vfs*, const char* name, int) {
  const int error = current->next();
  return error ? error : system->xDelete(system, name, 0);
}

}  // namespace

FailingVFS::FailingVFS() : real(sqlite3_vfs_find(nullptr)) {
  current = this;
  system = real;
  vfs = *real;
  vfs.zName = "failing";
  vfs.pNext = nullptr;
  vfs.szOsFile = static_cast<int>(sizeof(File)) + real->szOsFile;
  vfs.xOpen = open;
  vfs.xDelete = remove;
  sqlite3_vfs_register(&vfs, 1);
}

FailingVFS::~FailingVFS() {
  sqlite3_vfs_unregister(&vfs);
  sqlite3_vfs_register(real, 1);
  current = nullptr;
}

void FailingVFS::arm(int number, Kind kind, int error) {
  isArmed = true;
  counted = 0;
  failing = number;
  failingKind = kind;
  failingError = error;
}

int FailingVFS::disarm() {
  isArmed = false;
  return counted;
}

int FailingVFS::next() {
  if (!isArmed) return SQLITE_OK;
  ++counted;
  const bool fails = failingKind == Kind::once ? counted == failing : counted >= failing;
  return fails ? failingError : SQLITE_OK;
}

}  // namespace korvantis::test
