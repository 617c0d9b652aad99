<?xml version="1.0"?>
<!-- Tells of a report of CTest or GoogleTest in plain text: each test that failed, with what it said,
     each that was skipped, with its reason, and a last line with three counts: passed, failed,
     skipped. CTest says "notrun" of what it skips as well as of what it cannot start. -->
<xsl:stylesheet version="1.0" xmlns:xsl="http://www.w3.org/1999/XSL/Transform">
<xsl:output method="text" encoding="UTF-8"/>

<xsl:template match="/">
  <xsl:variable name="skipped" select="//testcase[skipped and not(failure) and
      (@result = 'skipped' or starts-with(skipped/@message, 'SKIP_'))]"/>
  <xsl:variable name="failed" select="//testcase[failure or error or @status = 'fail' or
      @status = 'disabled' or
      (@status = 'notrun' and not(starts-with(skipped/@message, 'SKIP_')))]"/>
  <xsl:for-each select="$skipped">
    <xsl:text>   skipped: </xsl:text>
    <xsl:call-template name="name"/>
    <xsl:text>: </xsl:text>
    <xsl:choose>
      <xsl:when test="@result">
        <xsl:value-of select="normalize-space(substring-after(skipped/@message, '&#10;'))"/>
      </xsl:when>
      <xsl:when test="contains(system-out, ': Skipped&#10;')">
        <xsl:value-of select="normalize-space(substring-before(
            substring-after(system-out, ': Skipped&#10;'), '[  SKIPPED'))"/>
      </xsl:when>
      <xsl:otherwise><xsl:value-of select="normalize-space(system-out)"/></xsl:otherwise>
    </xsl:choose>
    <xsl:text>&#10;</xsl:text>
  </xsl:for-each>
  <xsl:for-each select="$failed">
    <xsl:text>   FAILED: </xsl:text>
    <xsl:call-template name="name"/>
    <xsl:text>&#10;</xsl:text>
    <xsl:for-each select="failure | error | skipped">
      <xsl:value-of select="concat(@message, '&#10;')"/>
    </xsl:for-each>
    <xsl:value-of select="system-out"/>
    <xsl:text>&#10;</xsl:text>
  </xsl:for-each>
  <xsl:value-of select="concat(count(//testcase) - count($failed) - count($skipped), ' ',
      count($failed), ' ', count($skipped), '&#10;')"/>
</xsl:template>

<!-- CTest names a test in full; GoogleTest has its suite apart. -->
<xsl:template name="name">
  <xsl:if test="@classname != @name"><xsl:value-of select="concat(@classname, '.')"/></xsl:if>
  <xsl:value-of select="@name"/>
</xsl:template>

</xsl:stylesheet>
