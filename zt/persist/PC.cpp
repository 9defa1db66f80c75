#include <zt/persist/PC.h>

namespace ZT {

PC::PC() = default;

PC::PC(unsigned int version, unsigned int schema)
    : m_nVersion(version),
      m_schema(schema <= eSchema23 ? static_cast<ESchema2>(schema) : eSchemaNone) {}

PC::PC(unsigned int version, ESchema2 schema) : m_nVersion(version), m_schema(schema) {}

PC::PC(CString exInfo) : m_strExInfo(exInfo) {}

PC::PC(const PC& other) {
    Copy(other);
}

PC::~PC() = default;

PC& PC::operator=(const PC& other) {
    Copy(other);
    m_pExObject = other.m_pExObject;
    return *this;
}

void PC::Copy(const PC& other) {
    m_nVersion = other.m_nVersion;
    m_schema = other.m_schema;
    m_nUserData = other.m_nUserData;
    m_mode = other.m_mode;
    m_strName = other.m_strName;
    m_strExInfo = other.m_strExInfo;
    m_nExData = other.m_nExData;
    m_nData = other.m_nData;
    m_nParamA = other.m_nParamA;
    m_nParamB = other.m_nParamB;
}

void PC::CopyExInfo(const PC& other) {
    m_strExInfo = other.m_strExInfo;
    m_nExData = other.m_nExData;
    if (other.m_pExObject) m_pExObject = other.m_pExObject;
}

void PC::Construct() {
    m_nVersion = 0;
    m_schema = eSchemaNone;
    m_nUserData = 0;
    m_mode = -1;
    m_nExData = 0;
    m_nData = 0;
    m_nParamA = -1;
    m_nParamB = 14;
    m_pExObject = nullptr;
}

}  // namespace ZT
