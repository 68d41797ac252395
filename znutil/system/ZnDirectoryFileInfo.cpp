#include <znutil/system/ZnDirectoryFileInfo.h>

#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnSystemTime.h>

ZnDirectoryFileInfo::ZnDirectoryFileInfo(ZnDirectory *owner) : fdFindData(), pDirectory(owner) {}

ZnString ZnDirectoryFileInfo::GetFileName() { return ZnString(fdFindData.cFileName); }

ZnString ZnDirectoryFileInfo::GetFilePath() { return pDirectory->GetPathName() ^ GetFileName(); }

unsigned long ZnDirectoryFileInfo::QueryAttributes() const { return fdFindData.dwFileAttributes; }

unsigned long ZnDirectoryFileInfo::Size() const { return fdFindData.nFileSizeLow; }

void ZnDirectoryFileInfo::QueryModTime(ZnFileTime *time) const { *time = fdFindData.ftLastWriteTime; }

void ZnDirectoryFileInfo::QueryCreateTime(ZnFileTime *time) const { *time = fdFindData.ftCreationTime; }

void ZnDirectoryFileInfo::QueryModTimeAsSystemTime(ZnSystemTime *time) const { *time = fdFindData.ftLastWriteTime; }

void ZnDirectoryFileInfo::QueryCreateTimeAsSystemTime(ZnSystemTime *time) const { *time = fdFindData.ftCreationTime; }
