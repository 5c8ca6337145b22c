/* Start and end of the library, objects and their reference counts, the
 * class hierarchy, registered element classes, strings, storage, sets. */
#ifndef QD3D_OBJECTS_H
#define QD3D_OBJECTS_H

#include "platform/qd3d/QD3DTypes.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Starts may nest; the last Q3Exit also forgets the classes that were
 * registered since the first start. */
TQ3Status Q3Initialize(void);
TQ3Status Q3Exit(void);
TQ3Boolean Q3IsInitialized(void);

/* Objects. Q3Object_GetType answers the type directly below the root
 * ('shrd', 'view', 'pick', 'elmn'); Q3Object_GetLeafType the object's own. */
TQ3Status Q3Object_Dispose(TQ3Object object);
TQ3Object Q3Object_Duplicate(TQ3Object object);
TQ3ObjectType Q3Object_GetType(TQ3Object object);
TQ3ObjectType Q3Object_GetLeafType(TQ3Object object);
TQ3Boolean Q3Object_IsType(TQ3Object object, TQ3ObjectType type);
TQ3Status Q3Object_Submit(TQ3Object object, TQ3ViewObject view);
TQ3Boolean Q3Object_IsDrawable(TQ3Object object);

TQ3ObjectType Q3Shared_GetType(TQ3SharedObject sharedObject);
TQ3SharedObject Q3Shared_GetReference(TQ3SharedObject sharedObject);
TQ3Uns32 Q3Shared_GetReferenceCount(TQ3SharedObject sharedObject);
TQ3Status Q3Shared_Edited(TQ3SharedObject sharedObject);
TQ3Uns32 Q3Shared_GetEditIndex(TQ3SharedObject sharedObject);
TQ3ObjectType Q3Shape_GetType(TQ3ShapeObject shape);

/* Number of live objects of the library, for leak checks. */
TQ3Uns32 Q3Memory_CountObjects(void);

/* Class hierarchy. */
TQ3Status Q3ObjectHierarchy_GetTypeFromString(const char* objectClassString,
                                              TQ3ObjectType* objectClassType);
TQ3Status Q3ObjectHierarchy_GetStringFromType(TQ3ObjectType objectClassType,
                                              TQ3ObjectClassNameString objectClassString);
TQ3Boolean Q3ObjectHierarchy_IsTypeRegistered(TQ3ObjectType objectClassType);
TQ3Boolean Q3ObjectHierarchy_IsNameRegistered(const char* objectClassName);
TQ3Status Q3ObjectHierarchy_GetSubClassData(TQ3ObjectType objectClassType,
                                            TQ3SubClassData* subClassData);
TQ3Status Q3ObjectHierarchy_EmptySubClassData(TQ3SubClassData* subClassData);

/* Registered element classes. The meta handler answers the methods of
 * QD3DTypes.h by their type; an element without copy methods is copied
 * byte for byte. Give sizeOfElement as the size of the element's struct on
 * this platform (a reference to an object is sizeof(TQ3Object), 8 bytes). */
TQ3XObjectClass Q3XElementClass_Register(TQ3ElementType* elementType, const char* name,
                                         TQ3Uns32 sizeOfElement, TQ3XMetaHandler metaHandler);
TQ3Status Q3XElementType_GetElementSize(TQ3ElementType elementType, TQ3Uns32* sizeOfElement);
TQ3Status Q3XObjectClass_GetType(TQ3XObjectClass objectClass, TQ3ObjectType* theType);
TQ3XObjectClass Q3XObjectHierarchy_FindClassByType(TQ3ObjectType theType);
TQ3Status Q3XObjectHierarchy_UnregisterClass(TQ3XObjectClass objectClass);

/* Strings. */
TQ3StringObject Q3CString_New(const char* str);
TQ3Status Q3CString_GetLength(TQ3StringObject stringObj, TQ3Uns32* length);
TQ3Status Q3CString_SetString(TQ3StringObject stringObj, const char* str);
TQ3Status Q3CString_GetString(TQ3StringObject stringObj, char** str);
TQ3Status Q3CString_EmptyData(char** str);

/* Memory storage. _New copies the bytes; _NewBuffer uses the caller's
 * buffer in place, which must outlive the storage object. */
TQ3StorageObject Q3MemoryStorage_New(const unsigned char* buffer, TQ3Uns32 validSize);
TQ3StorageObject Q3MemoryStorage_NewBuffer(unsigned char* buffer, TQ3Uns32 validSize,
                                           TQ3Uns32 bufferSize);
TQ3Status Q3MemoryStorage_SetBuffer(TQ3StorageObject storage, unsigned char* buffer,
                                    TQ3Uns32 validSize, TQ3Uns32 bufferSize);
TQ3Status Q3MemoryStorage_GetBuffer(TQ3StorageObject storage, unsigned char** buffer,
                                    TQ3Uns32* validSize, TQ3Uns32* bufferSize);
TQ3Status Q3Storage_GetSize(TQ3StorageObject storage, TQ3Uns32* size);
TQ3Status Q3Storage_GetData(TQ3StorageObject storage, TQ3Uns32 offset, TQ3Uns32 dataSize,
                            unsigned char* data, TQ3Uns32* sizeRead);

/* Files: no file format is read here; the call answers NULL. */
TQ3Object Q3File_ReadObject(TQ3FileObject file);

/* Sets and attribute sets. Data are copied in and out; an element of a
 * registered class goes through its copy methods. */
TQ3SetObject Q3Set_New(void);
TQ3Status Q3Set_Add(TQ3SetObject set, TQ3ElementType type, const void* data);
TQ3Status Q3Set_Get(TQ3SetObject set, TQ3ElementType type, void* data);
TQ3Boolean Q3Set_Contains(TQ3SetObject set, TQ3ElementType type);
TQ3Status Q3Set_Clear(TQ3SetObject set, TQ3ElementType type);
TQ3Status Q3Set_Empty(TQ3SetObject set);
TQ3Status Q3Set_GetNextElementType(TQ3SetObject set, TQ3ElementType* type);

TQ3AttributeSet Q3AttributeSet_New(void);
TQ3Status Q3AttributeSet_Add(TQ3AttributeSet attributeSet, TQ3AttributeType type, const void* data);
TQ3Boolean Q3AttributeSet_Contains(TQ3AttributeSet attributeSet, TQ3AttributeType type);
TQ3Status Q3AttributeSet_Get(TQ3AttributeSet attributeSet, TQ3AttributeType type, void* data);
TQ3Status Q3AttributeSet_Clear(TQ3AttributeSet attributeSet, TQ3AttributeType type);
TQ3Status Q3AttributeSet_Empty(TQ3AttributeSet attributeSet);
TQ3Status Q3AttributeSet_GetNextAttributeType(TQ3AttributeSet source, TQ3AttributeType* type);
TQ3Status Q3AttributeSet_Submit(TQ3AttributeSet attributeSet, TQ3ViewObject view);
/* result := parent's attributes overridden by child's. */
TQ3Status Q3AttributeSet_Inherit(TQ3AttributeSet parent, TQ3AttributeSet child,
                                 TQ3AttributeSet result);

#ifdef __cplusplus
}
#endif

#endif
