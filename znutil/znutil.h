// Every public header of the znutil library.
//
//   #include <znutil/znutil.h>
#ifndef ZNUTIL_ZNUTIL_H
#define ZNUTIL_ZNUTIL_H

#include <znutil/platform/Module.h>
#include <znutil/platform/PeFormat.h>
#include <znutil/platform/Registry.h>
#include <znutil/platform/StringTable.h>
#include <znutil/platform/UserInterface.h>
#include <znutil/platform/WinTypes.h>

#include <znutil/application/UtilityApp.h>
#include <znutil/application/ZnEnvVariable.h>
#include <znutil/application/ZnNamePathPair.h>
#include <znutil/application/ZnPathSearch.h>
#include <znutil/application/ZnRegVariable.h>

#include <znutil/concurrency/ZnAtomicWord.h>
#include <znutil/concurrency/ZnCriticalSection.h>
#include <znutil/concurrency/ZnEvent.h>
#include <znutil/concurrency/ZnLock.h>
#include <znutil/concurrency/ZnMultipleEvents.h>
#include <znutil/concurrency/ZnNativeThread.h>
#include <znutil/concurrency/ZnNativeThreadWaitObject.h>
#include <znutil/concurrency/ZnPrimitiveThread.h>
#include <znutil/concurrency/ZnPrimitiveThreadWaitObject.h>
#include <znutil/concurrency/ZnSleeper.h>
#include <znutil/concurrency/ZnThread.h>
#include <znutil/concurrency/ZnThreadNotify.h>
#include <znutil/concurrency/ZnThreadWork.h>

#include <znutil/containers/ZnDblList.h>
#include <znutil/containers/ZnDictionary.h>
#include <znutil/containers/ZnHash.h>
#include <znutil/containers/ZnHashTable.h>
#include <znutil/containers/ZnHashTableDeleteCallback.h>
#include <znutil/containers/ZnHashTableItem.h>
#include <znutil/containers/ZnHashTableIter.h>
#include <znutil/containers/ZnHashTableStatistics.h>
#include <znutil/containers/ZnIndex.h>
#include <znutil/containers/ZnIndex64.h>
#include <znutil/containers/ZnIntList.h>
#include <znutil/containers/ZnKeyedIndex.h>
#include <znutil/containers/ZnListContext.h>
#include <znutil/containers/ZnListContextData.h>
#include <znutil/containers/ZnListItemCompare.h>
#include <znutil/containers/ZnListItemCopy.h>
#include <znutil/containers/ZnListItemDestroy.h>
#include <znutil/containers/ZnListItemFilter.h>
#include <znutil/containers/ZnListItemIterate.h>
#include <znutil/containers/ZnListItemMatches.h>
#include <znutil/containers/ZnNullContext.h>
#include <znutil/containers/ZnNullUuid.h>
#include <znutil/containers/ZnOrderedList.h>
#include <znutil/containers/ZnSortedList.h>
#include <znutil/containers/ZnSortedListItem.h>
#include <znutil/containers/ZnStack.h>
#include <znutil/containers/ZnTDblList.h>
#include <znutil/containers/ZnTListItemCompare.h>
#include <znutil/containers/ZnTListItemDestroy.h>
#include <znutil/containers/ZnTListItemFilter.h>
#include <znutil/containers/ZnTListItemStringCompare.h>
#include <znutil/containers/ZnTListItemStringKeyCompare.h>
#include <znutil/containers/ZnTOrderedList.h>
#include <znutil/containers/ZnTStringKeyOrderedList.h>
#include <znutil/containers/ZnUuid.h>
#include <znutil/containers/ZnUuidIndex.h>

#include <znutil/memory/ZenoUtilHeap.h>
#include <znutil/memory/ZnFixedBlockAllocator.h>
#include <znutil/memory/ZnFixedBlockOperators.h>
#include <znutil/memory/ZnMemBlock.h>

#include <znutil/system/ZnDirectory.h>
#include <znutil/system/ZnDirectoryFileInfo.h>
#include <znutil/system/ZnExeFileMapping.h>
#include <znutil/system/ZnExeResources.h>
#include <znutil/system/ZnFileInformation.h>
#include <znutil/system/ZnFileTime.h>
#include <znutil/system/ZnHPTimer.h>
#include <znutil/system/ZnPathFunctions.h>
#include <znutil/system/ZnStopWatch.h>
#include <znutil/system/ZnSystemTime.h>
#include <znutil/system/ZnTask.h>
#include <znutil/system/ZnTaskList.h>
#include <znutil/system/ZnTickCount.h>
#include <znutil/system/ZnTime.h>
#include <znutil/system/ZnVersionResource.h>

#include <znutil/text/ZnNullString.h>
#include <znutil/text/ZnPointerStorageString.h>
#include <znutil/text/ZnStrStack.h>
#include <znutil/text/ZnString.h>
#include <znutil/text/ZnStringCursor.h>
#include <znutil/text/ZnStringHeap.h>
#include <znutil/text/ZnStringList.h>
#include <znutil/text/ZnStringRef.h>
#include <znutil/text/ZnStringScanner.h>
#include <znutil/text/ZnStringSize.h>
#include <znutil/text/ZnStringTokenizerCallBack.h>

#include <znutil/values/ZnBinary.h>
#include <znutil/values/ZnBinaryStream.h>
#include <znutil/values/ZnFileStream.h>
#include <znutil/values/ZnMemoryStream.h>
#include <znutil/values/ZnStream.h>
#include <znutil/values/ZnStreamError.h>
#include <znutil/values/ZnStreamException.h>
#include <znutil/values/ZnVariant.h>
#include <znutil/values/ZnVariantData.h>
#include <znutil/values/ZnVdBool.h>
#include <znutil/values/ZnVdDouble.h>
#include <znutil/values/ZnVdFloat.h>
#include <znutil/values/ZnVdInt.h>
#include <znutil/values/ZnVdNumber.h>
#include <znutil/values/ZnVdString.h>
#include <znutil/values/ZnVdUint.h>
#include <znutil/values/ZnVdValue.h>

#include <znutil/configuration/ZnCfgBinaryData.h>
#include <znutil/configuration/ZnCfgData.h>
#include <znutil/configuration/ZnCfgEntry.h>
#include <znutil/configuration/ZnCfgEntryList.h>
#include <znutil/configuration/ZnCfgFile.h>
#include <znutil/configuration/ZnCfgFileParser.h>
#include <znutil/configuration/ZnCfgFileParserItem.h>
#include <znutil/configuration/ZnCfgFloatData.h>
#include <znutil/configuration/ZnCfgIntegerData.h>
#include <znutil/configuration/ZnCfgParserBinaryStream.h>
#include <znutil/configuration/ZnCfgSection.h>
#include <znutil/configuration/ZnCfgSectionList.h>
#include <znutil/configuration/ZnCfgTextData.h>
#include <znutil/configuration/ZnCfgTokenInfo.h>
#include <znutil/configuration/ZnConfiguration.h>

#include <znutil/logging/ZnLogger.h>
#include <znutil/logging/ZnLoggerFrame.h>

#include <znutil/undo/ZnAction.h>
#include <znutil/undo/ZnActionManager.h>

#include <znutil/regex/ZnRegularExpression.h>
#include <znutil/regex/regexpr.h>

#endif  // ZNUTIL_ZNUTIL_H
